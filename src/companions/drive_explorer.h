#pragma once
// The drive explorer: the machine's drives in a list above a browser pane that shows the
// chosen one's folders and files.

#include "platform/drive_list.h"
#include "platform/form.h"
#include "platform/web_browser.h"

class DriveExplorerFRM : public platform::Form {
public:
    DriveExplorerFRM();

    platform::DriveListBox DriveOne{*this, "DriveOne", {0, 0, 8175, 315}};
    platform::WebBrowser DriveExplorerWindow{*this, "DriveExplorerWindow", {0, 300, 8175, 5295}};

    void DriveOne_Change();

protected:
    void Form_Load() override;
    void Form_Resize() override;
    void Form_Unload(int& cancel) override;
};

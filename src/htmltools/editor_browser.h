#pragma once
// The HTML editor's preview: a browser window showing the preview file. It shows itself as it
// loads and has no closing sound.

#include "platform/form.h"
#include "platform/web_browser.h"

class EditorBrowserFRM : public platform::Form {
public:
    EditorBrowserFRM();

    platform::WebBrowser BrowserWindow{*this, "BrowserWindow", {120, 120, 7920, 5295}};

protected:
    void Form_Load() override;
    void Form_Resize() override;
};

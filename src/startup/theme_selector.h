#pragma once
// The theme selector: a directory tree and the path box TPath, whose text is the program's one
// theme directory. Made on first use and then only hidden, so that text lives as long as the
// program.

#include "shared/settings.h"

#include "platform/controls.h"
#include "platform/dir_list.h"
#include "platform/form.h"

class ThemeSelector : public platform::Form {
public:
    ThemeSelector();

    platform::Label Info{*this, "Info", {120, 120, 6255, 255}, QStringLiteral("Please Select a Directory For a Theme.")};
    platform::DirListBox Dir{*this, "Dir", {120, 480, 6255, 3870}};
    platform::TextBox TPath{*this, "TPath", {120, 4440, 6255, 285}};
    platform::CommandButton CancelCMD{*this, "CancelCMD", {120, 4800, 2415, 375}, QStringLiteral("Cancel")};
    platform::CommandButton OkayCMD{*this, "OkayCMD", {2640, 4800, 3735, 375}, QStringLiteral("Okay")};

    void Dir_Change();
    void CancelCMD_Click();
    void OkayCMD_Click();

protected:
    void Form_Load() override;
    void Form_Unload(int& cancel) override;
};

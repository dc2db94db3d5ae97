#pragma once
// The HTML editor: a plain-text editing area holding HTML source, opened from a template,
// loaded from and saved to files, and previewed in a browser window. The HTML source viewer
// hands its text over by writing RichText.

#include "platform/common_dialog.h"
#include "platform/controls.h"
#include "platform/form.h"
#include "platform/rich_text_box.h"

class EditorFRM : public platform::Form {
public:
    EditorFRM();

    platform::CommandButton OpenCMD{*this, "OpenCMD", {120, 120, 1095, 255}, QStringLiteral("&Open")};
    platform::CommandButton SaveCMD{*this, "SaveCMD", {1440, 120, 1095, 255}, QStringLiteral("&Save")};
    platform::CommandButton PreviewCMD{*this, "PreviewCMD", {6480, 120, 1575, 255}, QStringLiteral("&Preview")};
    platform::RichTextBox RichText{*this, "RichText", {120, 480, 7935, 4695}};
    // The theme's background, behind everything.
    platform::Image ImagePic{*this, "ImagePic", {0, 0, 8175, 5295}, platform::Image::Fit::Stretch};
    platform::CommonDialog CommonD;

    void OpenCMD_Click();
    void SaveCMD_Click();
    void PreviewCMD_Click();

    // The new document.
    static const QString kTemplate;

protected:
    void Form_Load() override;
    void Form_Resize() override;
    void Form_Unload(int& cancel) override;
};

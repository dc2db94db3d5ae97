// The HTML editor's template, its file commands, the preview and its resize rule.

#include "editor.h"

#include "editor_browser.h"
#include "shared/statf.h"
#include "shared/window_look.h"
#include "shared/settings.h"
#include "platform/files.h"
#include "platform/picture.h"
#include "platform/runtime.h"
#include "platform/wiring.h"

using namespace platform;

namespace {
constexpr int kClientWidth = 8175;
constexpr int kClientHeight = 5295;
// The resize rule: the text area keeps these margins to the outer size, and Preview stays
// right-aligned but never left of the Save button.
constexpr int kTextWidthMargin = 350;
constexpr int kTextHeightMargin = 1100;
constexpr int kPreviewRightMargin = 240;
constexpr int kPreviewLeftmost = 2760;

const QString kFilter = QStringLiteral("HTML Files (*.html)|*.html|HTM Files (*.htm)|*.htm)");

const Wiring<EditorFRM> kWiring[] = {
    {OnClick, &EditorFRM::OpenCMD, &EditorFRM::OpenCMD_Click},
    {OnClick, &EditorFRM::SaveCMD, &EditorFRM::SaveCMD_Click},
    {OnClick, &EditorFRM::PreviewCMD, &EditorFRM::PreviewCMD_Click},
};
} // namespace

const QString EditorFRM::kTemplate = QStringLiteral(
    "<HTML>\r\n\r\n<HEAD>\r\n<TITLE>Web Page</TITLE>\r\n</HEAD>\r\n\r\n<BODY>\r\n\r\n</BODY>\r\n\r\n</HTML>");

EditorFRM::EditorFRM() : Form("EditorFRM", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("HTML Editor"));
    UseWindowFont({&OpenCMD, &SaveCMD, &RichText}, kButtonFontPoints);
    UseWindowFont({&PreviewCMD}, kButtonFontPoints, true);
    ImagePic.ZOrder(1);
    wire(*this, kWiring);
}

void EditorFRM::Form_Load()
{
    // Errors: none trapped. No sound: whoever opens the editor plays it.
    RichText.setText(kTemplate);
    ImagePic.setPicture(LoadPicture(ThemeDir() + "/Main.BMP"));
}

void EditorFRM::OpenCMD_Click()
{
    // Errors: none trapped. The lines are joined with nothing between them.
    PlayClickSound();
    CommonD.Filter = kFilter;
    CommonD.ShowOpen();
    if (CommonD.FileName.isEmpty())
        return;
    Open(CommonD.FileName, OpenMode::Input, 1);
    QString text;
    while (!Eof(1)) {
        // Kept: the lines joined with nothing between; with breaks, an opened file would show its lines apart.
        text += LineInput(1);
        RichText.setText(text);
    }
    Close(1);
}

void EditorFRM::SaveCMD_Click()
{
    // Errors: none trapped.
    PlayClickSound();
    CommonD.Filter = kFilter;
    CommonD.ShowSave();
    if (CommonD.FileName.isEmpty())
        return;
    Open(CommonD.FileName, OpenMode::Output, 1);
    PrintLine(1, RichText.Text());
    Close(1);
}

void EditorFRM::PreviewCMD_Click()
{
    // Errors: none trapped. No click sound.
    form<StatF>().Show();
    form<StatF>().Info.setCaption(QStringLiteral("Creating Preview..."));
    Open(AppPath() + "\\Preview.html", OpenMode::Output, 1);
    PrintLine(1, RichText.Text());
    Close(1);
    form<EditorBrowserFRM>().Show();
    form<EditorBrowserFRM>().BrowserWindow.Navigate(AppPath() + "\\Preview.html");
    form<StatF>().Info.setCaption(QStringLiteral("Done Creating Preview."));
    Unload(form<StatF>());
}

void EditorFRM::Form_Resize()
{
    // Errors: ignored statement by statement (a window too small leaves a control as it was).
    OnErrorResumeNext next;
    next([&] { RichText.setWidth(Width() - kTextWidthMargin); });
    next([&] { RichText.setHeight(Height() - kTextHeightMargin); });
    next([&] { ImagePic.setWidth(Width()); });
    next([&] { ImagePic.setHeight(Height()); });
    next([&] { PreviewCMD.setLeft(Width() - PreviewCMD.Width() - kPreviewRightMargin); });
    next([&] { if (PreviewCMD.Left() < kPreviewLeftmost) PreviewCMD.setLeft(kPreviewLeftmost); });
}

void EditorFRM::Form_Unload(int& cancel)
{
    // Errors: none trapped.
    (void)cancel;
    PlayCloseSound();
}

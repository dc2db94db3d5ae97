// The source viewer's load sequence, its fetch, and the hand-over to the editor.

#include "html_viewer.h"

#include "browser/main_window.h"
#include "editor.h"
#include "shared/statf.h"
#include "shared/window_look.h"
#include "shared/settings.h"
#include "platform/picture.h"
#include "platform/runtime.h"
#include "platform/wiring.h"

using namespace platform;

namespace {
constexpr int kClientWidth = 8055;
constexpr int kClientHeight = 6840;
const QString kLoading = QStringLiteral("Loading HTML Code... Please Wait.");
const QString kDone = QStringLiteral("Done Loading HTML Code.");
const QString kNothing = QStringLiteral("There Was an Error. Check Your Internet Connection or URL.");

const Wiring<HTMLViewerFRM> kWiring[] = {
    {OnClick, &HTMLViewerFRM::VS, &HTMLViewerFRM::VS_Click},
    {OnKeyPress, &HTMLViewerFRM::URL, &HTMLViewerFRM::URL_KeyPress},
    {OnClick, &HTMLViewerFRM::OpenInEd, &HTMLViewerFRM::OpenInEd_Click},
};
} // namespace

HTMLViewerFRM::HTMLViewerFRM() : Form("HTMLViewerFRM", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("HTML Viewer"));
    UseWindowFont({&Info, &URL, &OpenInEd, &HTML});
    UseWindowFont({&VS}, kFontPoints, true);
    Info.setForeColor(vbWhite);
    ImagePic.ZOrder(1);
    // Tab order: the address, View Source, the source, then Open In Editor.
    SetTabOrder({&URL, &VS, &HTML, &OpenInEd});
    wire(*this, kWiring);
}

void HTMLViewerFRM::Form_Load()
{
    // Errors: none trapped. The colour step gives its colour to an object that is never set:
    // with a colour code of "1", "2" or "3" it fails, and the program ends.
    Info.setBackStyle(0);
    Show();
    PlayOpenSound();
    URL.setText(form<MainFRM>().URLC.Text());
    ImagePic.setPicture(LoadPicture(ThemeDir() + "/Main.BMP"));
    // Kept: any colour code ends the program here; applied instead, the viewer would open where it stops.
    WithFontColour({vbWhite, vbBlack, vbButtonFace}, [](OleColor) { raiseError(ErrObjectRequired); });
    // Kept: the pop-up here and again in VS_Click; a user sees it come and go twice as the viewer opens.
    form<StatF>().Show();
    form<StatF>().Info.setCaption(kLoading);
    VS_Click();
    form<StatF>().Info.setCaption(kDone);
    Unload(form<StatF>());
}

void HTMLViewerFRM::VS_Click()
{
    // Errors: none trapped: an address the transfer control cannot attempt ends the program.
    form<StatF>().Show();
    form<StatF>().Info.setCaption(kLoading);
    PlayClickSound();
    VS.setEnabled(false);
    HTML.setText(InetOne.OpenURL(URL.Text()));
    VS.setEnabled(true);
    if (HTML.Text().isEmpty())
        HTML.setText(kNothing);
    form<StatF>().Info.setCaption(kDone);
    Unload(form<StatF>());
}

void HTMLViewerFRM::URL_KeyPress(std::int16_t& keyAscii)
{
    // Errors: none trapped. The key is not swallowed.
    if (keyAscii == vbKeyReturn)
        VS_Click();
}

void HTMLViewerFRM::OpenInEd_Click()
{
    // Errors: none trapped.
    form<EditorFRM>().RichText.setText(HTML.Text());
    form<EditorFRM>().Show();
    PlayOpenSound();
}

void HTMLViewerFRM::Form_Unload(int& cancel)
{
    // Errors: none trapped.
    (void)cancel;
    PlayCloseSound();
}

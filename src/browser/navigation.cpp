// The six themed buttons, the address box's Enter and access phrase, and Copy URL.

#include "main_window.h"

#include "accessories/secret_place.h"
#include "companions/home_page.h"
#include "shared/procedures.h"
#include "shared/window_look.h"
#include "platform/clipboard.h"
#include "platform/runtime.h"

using namespace platform;

namespace {
const QString kAccessPhrase = QStringLiteral("Crane at Dusk");
} // namespace

void MainFRM::Back_Click()
{
    // Errors: ignored statement by statement.
    // Kept: the click before the call here and in Forward, after it in Go, Refresh and Stop; a user hears the order.
    OnErrorResumeNext next;
    next([&] { PlayClickSound(); });
    next([&] { BrowserWindow.GoBack(); });
}

void MainFRM::ForwardF_Click()
{
    // Errors: ignored statement by statement.
    OnErrorResumeNext next;
    next([&] { PlayClickSound(); });
    next([&] { BrowserWindow.GoForward(); });
}

void MainFRM::Go_Click()
{
    // Errors: ignored statement by statement.
    OnErrorResumeNext next;
    next([&] { BrowserWindow.Navigate(URLC.Text()); });
    next([&] { setCaption("Glidepath - [Going to: " + URLC.Text() + "]"); });
    next([&] { PlayClickSound(); });
}

void MainFRM::Home_Click()
{
    // Errors: none trapped.
    BrowserWindow.Navigate(form<HomePageFRM>().Data.Text());
    PlayClickSound();
}

void MainFRM::RefreshR_Click()
{
    // Errors: ignored statement by statement.
    OnErrorResumeNext next;
    next([&] { BrowserWindow.Refresh(); });
    next([&] { PlayClickSound(); });
}

void MainFRM::StopS_Click()
{
    // Errors: ignored statement by statement.
    OnErrorResumeNext next;
    next([&] { BrowserWindow.Stop(); });
    next([&] { PlayClickSound(); });
}

void MainFRM::URLC_KeyPress(std::int16_t& keyAscii)
{
    // Errors: none trapped. The text is the box's text before this key is added.
    // Kept: so the phrase opens the hidden page at the key after its last letter, never at that letter.
    if (keyAscii == vbKeyReturn)
        Go_Click();
    if (URLC.Text() == kAccessPhrase)
        form<SecretPlace>().Show();
    if (URLC.Text() == kAccessPhrase)
        BrowserWindow.Stop();
}

void MainFRM::CopyURL_Click()
{
    // Errors: none trapped.
    ClipboardSetText(BrowserWindow.LocationURL());
}

#include "secret_place.h"

#include "shared/procedures.h"
#include "shared/window_look.h"
#include "startup/intro.h"
#include "shared/settings.h"
#include "platform/runtime.h"
#include "platform/wiring.h"

using namespace platform;

namespace {

constexpr int kClientWidth = 7020;
constexpr int kClientHeight = 3375;

struct Line {
    const char* text;
    TwipsRect rect;
};

// The author panel's labels, top to bottom; the contact and chat lines are stand-ins.
constexpr Line kLines[] = {
    {"You've Found the Secret Place.", {1800, 360, 4860, 255}},
    {"This is the Author of This Application, Marlo...", {1800, 660, 4860, 255}},
    {"This Little Window Will Disappear in 15 Seconds", {1800, 960, 4860, 255}},
    {"His E-Mail Adresses are:", {1800, 1380, 4860, 255}},
    {"marlo@example.com\nglidepath@example.org", {2040, 1620, 4620, 435}},
    {"Come and chat with him in ExampleChat (www.example.com/chat), on the server chat.example.net.",
     {1800, 2160, 4860, 660}},
};

const Wiring<SecretPlace> kWiring[] = {
    {OnTimer, &SecretPlace::Timer, &SecretPlace::Timer_Timer},
};

} // namespace

SecretPlace::SecretPlace() : Form("SecretPlace", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("Secret Place!"));
    platform::Image& picture = TImage.add(*this, "TImage", 0, TwipsRect{0, 0, kClientWidth, kClientHeight},
                                          platform::Image::Fit::Stretch);
    picture.setPicture(QPixmap(QStringLiteral(":/accessories/SecretPlace.JPG")));
    picture.setVisible(false);
    picture.ZOrder(1);
    picture.setAccessibleName(QStringLiteral("Crane at dusk"));
    Image.setPicture(QPixmap(QStringLiteral(":/accessories/Author.BMP")));
    Image.setAccessibleName(QStringLiteral("The author"));
    AuthorFRM.setBackColor(vbButtonFace); // opaque, as a classic frame is
    UseWindowFont({&AuthorFRM});
    for (int i = 0; i < int(std::size(kLines)); ++i) {
        Label& label = Data.add(AuthorFRM, "Data", i, kLines[i].rect, QString::fromLatin1(kLines[i].text));
        UseWindowFont({&label});
        label.setWordWrap(true);
    }
    wire(*this, kWiring);
}

void SecretPlace::Form_Load()
{
    // Errors: none trapped (a missing music file is the player's own silent failure).
    StayOnTop(*this);
    IntroFRM& intro = form<IntroFRM>();
    intro.Player.setAutoStart(true);
    intro.Player.Open(ThemeDir() + "/Intro.MP3");
    Show();
}

void SecretPlace::Form_Resize()
{
    // Errors: none trapped.
    TImage(0).setWidth(Width());
    TImage(0).setHeight(Height());
}

void SecretPlace::Timer_Timer()
{
    // Errors: none trapped. Once: the panel makes way for the picture.
    AuthorFRM.setVisible(false);
    TImage(0).setVisible(true);
    Timer.setEnabled(false);
}

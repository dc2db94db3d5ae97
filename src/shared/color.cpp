#include "color.h"

#include "shared/window_look.h"
#include "procedures.h"
#include "platform/runtime.h"

using namespace platform;

namespace {
constexpr int kClientWidth = 1455;
constexpr int kClientHeight = 525;
} // namespace

QString FontColour()
{
    return form<Color>().ForeC.Text();
}

Color::Color() : Form("Color", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("Color"));
    UseWindowFont({&ForeC});
}

void Color::Form_Load()
{
    // Errors: ignored, statement by statement.
    OnErrorResumeNext next;
    next([&] { LoadTextFile(ForeC, AppPath() + "/ForeC.INI"); });
}

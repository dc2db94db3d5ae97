#include "procedures.h"

#include "platform/controls.h"
#include "platform/convert.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/form.h"
#include "platform/runtime.h"
#include "platform/win32.h"

#include <cmath>

using namespace platform;

namespace {

constexpr int kIniBufferLength = 750;
constexpr int kSqueezeStep = 400;      // twips taken off the height each pass
constexpr int kSqueezeBand = 240;      // the squeeze stops at this height or less
constexpr int kStretchFirstStep = 99;  // twips added to the width in the first pass
constexpr int kLinesPasses = 300;      // counter 0..300: 301 passes
constexpr int kLinesGrid = 100;        // the lines' scale: 100 by 100 units
constexpr int kLinesColours = 15;      // palette entries 0..14
constexpr int kFrameMs = 16;           // one display frame
constexpr double kSecondsPerDay = 86400;

} // namespace

void LoadTextFile(TextBox& box, const QString& path)
{
    // Errors: ignored, statement by statement.
    OnErrorResumeNext next;
    QString text;
    next([&] { Open(path, OpenMode::Input, 1); });
    next([&] { text = InputChars(LOF(1), 1); });
    next([&] { Close(1); });
    next([&] { box.setText(text); });
}

void SaveTextFile(TextBox& box, const QString& path)
{
    // Errors: ignored, statement by statement.
    OnErrorResumeNext next;
    QString text;
    next([&] { text = box.Text(); });
    next([&] { Open(path, OpenMode::Output, 1); });
    next([&] { PrintLine(1, text); });
    next([&] { Close(1); });
}

void LoadListFile(const QString& path, ListBox& list)
{
    // Errors: ignored, statement by statement; the loop test is a statement like any other,
    // so when it fails the loop body runs.
    // Kept: so a missing file appends empty items without end; stopped, a user would see an empty list.
    OnErrorResumeNext next;
    QString field;
    next([&] { Open(path, OpenMode::Input, 1); });
    for (;;) {
        bool atEnd = false;
        if (next([&] { atEnd = Eof(1); }) && atEnd)
            break;
        next([&] { field = InputField(1); });
        DoEvents();
        next([&] { list.AddItem(field); });
    }
    next([&] { Close(1); });
}

void SaveListFile(const QString& path, ListBox& list)
{
    // Errors: ignored, statement by statement.
    OnErrorResumeNext next;
    int count = 0;
    next([&] { Open(path, OpenMode::Output, 1); });
    next([&] { count = list.ListCount(); });
    // Kept: no quoting, though the reader splits fields; a user sees an address with a comma come back as two.
    for (int i = 0; i <= count - 1; ++i)
        next([&] { PrintLine(1, list.List(i)); });
    next([&] { Close(1); });
}

QString ReadIniValue(const QString& section, QString& key, const QString& file)
{
    // Errors: ignored, statement by statement.
    OnErrorResumeNext next;
    QString buffer(kIniBufferLength, QChar(0));
    quint32 length = 0;
    QString value;
    // Kept: lower case here, upper case in the writer; keys compare without case, so a user sees no difference.
    next([&] { key = key.toLower(); });
    next([&] { length = GetPrivateProfileStringA(section, key, QString(), buffer, kIniBufferLength, file); });
    next([&] { value = buffer.left(length); });
    return value;
}

void WriteIniValue(const QString& section, const QString& key, const QString& value, const QString& file)
{
    // Errors: ignored, statement by statement.
    OnErrorResumeNext next;
    QString upperKey;
    next([&] { upperKey = key.toUpper(); }); // Kept: changed, a user's INI file would read "Dir=", not "DIR="
    next([&] { WritePrivateProfileStringA(section, upperKey, value, file); });
}

void Pause(long seconds)
{
    // Errors: none trapped.
    if (seconds <= 0)
        return; // a start rounded up would otherwise wait for the clock to catch up
    const double start = RoundHalfEven(SecondsSinceMidnight());
    auto elapsed = [start] {
        double now = SecondsSinceMidnight();
        if (now < start - 1)
            now += kSecondsPerDay; // past midnight the clock starts again from 0
        return now - start;
    };
    // Messages are processed as they arrive until the time is up, rather than by spinning:
    // the wait and what runs during it are the same, and the processor stays free.
    while (elapsed() < seconds)
        DoEventsFor(int(std::ceil((seconds - elapsed()) * 1000)));
}

void StayOnTop(Form& window)
{
    // Errors: none trapped.
    SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
}

void RandomLinesEffect(Form& window)
{
    // Errors: none trapped.
    if (window.WindowState() == vbMinimized)
        return;
    window.setBackColor(vbBlack);
    window.Scale(0, 0, kLinesGrid, kLinesGrid);
    for (int pass = 0; pass <= kLinesPasses; ++pass) {
        DoEvents();
        const int a = int(Rnd() * (kLinesGrid + 1));
        const int b = int(Rnd() * (kLinesGrid + 1));
        const int c = int(Rnd() * (kLinesGrid + 1));
        const int d = int(Rnd() * (kLinesGrid + 1));
        const OleColor colour = QBColor(int(Rnd() * kLinesColours));
        // Kept: four lines, the third the second drawn backwards; with three the effect would run a little faster.
        window.Line(a, c, b, d, colour);
        window.Line(a, d, b, c, colour);
        window.Line(b, c, a, d, colour);
        window.Line(c, d, a, b, colour);
    }
}

void SqueezeStretchEffect(Form& window)
{
    // Errors: none trapped; the running values are 16-bit and overflow past 32,767 twips.
    // Each pass waits for one frame so that every size is really shown on the screen.
    Integer height = window.Height();
    do {
        DoEventsFor(kFrameMs);
        height -= kSqueezeStep;
        window.setHeight(height.value());
        window.setTop(int(std::lround((ScreenHeight() - window.Height()) / 2.0)));
    } while (height > kSqueezeBand);

    Integer width = window.Width();
    Integer step = kStretchFirstStep;
    do {
        DoEventsFor(kFrameMs);
        width += step;
        window.setWidth(width.value());
        window.setLeft(int(std::lround((ScreenWidth() - window.Width()) / 2.0)));
        step += 1;
    } while (width < ScreenWidth());
}

void PlayWave(const QString& path)
{
    // Errors: none trapped.
    sndPlaySoundA(path, SND_ASYNC);
}

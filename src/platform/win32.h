#pragma once
// The desktop calls the shared procedures are written against, under their classic names.

#include "profile.h"

#include <QString>

namespace platform {

class Form;

constexpr unsigned SND_ASYNC = 0x1;
constexpr unsigned SND_NODEFAULT = 0x2;
// Plays a wave file on the sound server. Every sound plays asynchronously, whatever the flags
// say, so that the UI thread never waits for one.
int sndPlaySoundA(const QString& path, unsigned flags);

constexpr int HWND_TOPMOST = -1;
constexpr int HWND_NOTOPMOST = -2;
constexpr unsigned SWP_NOSIZE = 0x1;
constexpr unsigned SWP_NOMOVE = 0x2;
// Only what the program uses: making a window top-most, keeping its size and place.
int SetWindowPos(Form& window, int insertAfter, int x, int y, int cx, int cy, unsigned flags);

} // namespace platform

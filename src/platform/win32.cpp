#include "win32.h"

#include "form.h"
#include "runtime.h"
#include "sounds.h"

namespace platform {

int sndPlaySoundA(const QString& path, unsigned flags)
{
    Runtime::current().sounds().play(path, !(flags & SND_NODEFAULT));
    return 1;
}

int SetWindowPos(Form& window, int insertAfter, int x, int y, int cx, int cy, unsigned flags)
{
    if (insertAfter == HWND_TOPMOST)
        window.setTopMost();
    if (!(flags & SWP_NOMOVE)) {
        window.setLeft(toTwipsX(x));
        window.setTop(toTwipsY(y));
    }
    if (!(flags & SWP_NOSIZE)) {
        window.setWidth(toTwipsX(cx));
        window.setHeight(toTwipsY(cy));
    }
    return 1;
}

} // namespace platform

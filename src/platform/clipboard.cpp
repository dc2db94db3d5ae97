#include "clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace platform {

void ClipboardSetText(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
}

} // namespace platform

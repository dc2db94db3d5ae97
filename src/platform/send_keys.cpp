#include "send_keys.h"

#include "errors.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace platform {
namespace {

Qt::Key namedKey(const QString& name)
{
    const QString n = name.toUpper();
    if (n == QLatin1String("ENTER") || n == QLatin1String("~"))
        return Qt::Key_Return;
    if (n == QLatin1String("TAB"))
        return Qt::Key_Tab;
    if (n == QLatin1String("ESC") || n == QLatin1String("ESCAPE"))
        return Qt::Key_Escape;
    if (n == QLatin1String("BACKSPACE") || n == QLatin1String("BS"))
        return Qt::Key_Backspace;
    if (n.startsWith(QLatin1Char('F')) && n.size() <= 3 && n.mid(1).toInt() >= 1 && n.mid(1).toInt() <= 12)
        return Qt::Key(Qt::Key_F1 + n.mid(1).toInt() - 1);
    raiseError(ErrInvalidProcedureCall);
}

void post(Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text)
{
    QWidget* target = QApplication::focusWidget();
    if (!target)
        return; // no window has the keyboard: the keys go nowhere, as on the classic desktop
    QCoreApplication::postEvent(target, new QKeyEvent(QEvent::KeyPress, key, modifiers, text));
    QCoreApplication::postEvent(target, new QKeyEvent(QEvent::KeyRelease, key, modifiers, text));
}

} // namespace

void SendKeys(const QString& keys)
{
    Qt::KeyboardModifiers modifiers;
    for (qsizetype i = 0; i < keys.size(); ++i) {
        const QChar c = keys[i];
        if (c == QLatin1Char('^')) { modifiers |= Qt::ControlModifier; continue; }
        if (c == QLatin1Char('%')) { modifiers |= Qt::AltModifier; continue; }
        if (c == QLatin1Char('+')) { modifiers |= Qt::ShiftModifier; continue; }
        if (c == QLatin1Char('{')) {
            const qsizetype close = keys.indexOf(QLatin1Char('}'), i + 1);
            if (close < 0)
                raiseError(ErrInvalidProcedureCall);
            post(namedKey(keys.mid(i + 1, close - i - 1)), modifiers, QString());
            i = close;
        } else if (c == QLatin1Char('~')) {
            post(Qt::Key_Return, modifiers, QStringLiteral("\\r"));
        } else {
            const QChar upper = c.toUpper();
            const Qt::Key key = upper.unicode() < 128 ? Qt::Key(upper.unicode()) : Qt::Key_unknown;
            // With Ctrl the key carries its control character's text, as a keyboard gives it.
            const QString text = modifiers & Qt::ControlModifier && upper >= QLatin1Char('A') && upper <= QLatin1Char('Z')
                                     ? QString(QChar(upper.unicode() - 'A' + 1))
                                     : QString(c);
            post(key, modifiers, text);
        }
        modifiers = {};
    }
}

} // namespace platform

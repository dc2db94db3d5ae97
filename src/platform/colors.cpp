#include "colors.h"

#include "errors.h"

#include <QGuiApplication>
#include <QPalette>

#include <array>

namespace platform {

OleColor QBColor(int index)
{
    static constexpr std::array<OleColor, 16> palette = {
        RGB(0, 0, 0),       RGB(0, 0, 0x80),    RGB(0, 0x80, 0),    RGB(0, 0x80, 0x80),
        RGB(0x80, 0, 0),    RGB(0x80, 0, 0x80), RGB(0x80, 0x80, 0), RGB(0xC0, 0xC0, 0xC0),
        RGB(0x80, 0x80, 0x80), RGB(0, 0, 0xFF), RGB(0, 0xFF, 0),    RGB(0, 0xFF, 0xFF),
        RGB(0xFF, 0, 0),    RGB(0xFF, 0, 0xFF), RGB(0xFF, 0xFF, 0), RGB(0xFF, 0xFF, 0xFF),
    };
    if (index < 0 || index > 15)
        raiseError(ErrInvalidProcedureCall);
    return palette[index];
}

QColor toQColor(OleColor color)
{
    if (color & 0x80000000) {
        const QPalette palette = QGuiApplication::palette();
        switch (color & 0xFF) {
        case 1: return palette.color(QPalette::Window);           // desktop
        case 5: return palette.color(QPalette::Base);             // window
        case 8: return palette.color(QPalette::WindowText);       // window text
        case 12: return palette.color(QPalette::Dark);            // application workspace
        case 13: return palette.color(QPalette::Highlight);
        case 14: return palette.color(QPalette::HighlightedText);
        case 16: return palette.color(QPalette::Mid);             // button shadow
        case 17: return palette.color(QPalette::Disabled, QPalette::Text);
        case 18: return palette.color(QPalette::ButtonText);
        case 20: return palette.color(QPalette::Light);           // button highlight
        case 21: return palette.color(QPalette::Shadow);
        case 23: return palette.color(QPalette::ToolTipText);
        case 24: return palette.color(QPalette::ToolTipBase);
        default: return palette.color(QPalette::Button);          // 15 button face and the rest
        }
    }
    return QColor(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF);
}

} // namespace platform

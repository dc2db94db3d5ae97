#pragma once
// Colours as the classic platform stores them: 0xBBGGRR, or 0x80000000 + n for the desktop's
// system colour n (15 button face, 12 application workspace, ...), resolved when drawn.

#include <QColor>
#include <cstdint>

namespace platform {

using OleColor = std::uint32_t;

constexpr OleColor vbBlack = 0x000000;
constexpr OleColor vbWhite = 0xFFFFFF;
constexpr OleColor vbButtonFace = 0x8000000F;
constexpr OleColor vbApplicationWorkspace = 0x8000000C;
constexpr OleColor vbButtonText = 0x80000012;
constexpr OleColor vbWindowText = 0x80000008;

constexpr OleColor RGB(int red, int green, int blue)
{
    return OleColor(red & 0xFF) | OleColor(green & 0xFF) << 8 | OleColor(blue & 0xFF) << 16;
}

// The classic 16-colour palette by index 0..15; another index raises "Invalid procedure call".
OleColor QBColor(int index);

QColor toQColor(OleColor color);

} // namespace platform

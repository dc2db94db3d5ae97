#pragma once
// The symbol fonts of the classic desktop ("Wingdings"), which this desktop does not have:
// the characters the windows use in them, drawn as pictures.

#include <QColor>
#include <QPixmap>
#include <QString>

namespace platform {

// Whether the family is a symbol font this desktop lacks.
bool isSymbolFont(const QString& family);
// The character's glyph in the symbol font, pixelSize high; null for one that is not drawn.
QPixmap symbolGlyph(const QString& family, QChar character, int pixelSize, const QColor& colour);

} // namespace platform

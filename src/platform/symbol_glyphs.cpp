#include "symbol_glyphs.h"

#include <QPainter>
#include <QPainterPath>

namespace platform {

bool isSymbolFont(const QString& family)
{
    return family.compare(QLatin1String("Wingdings"), Qt::CaseInsensitive) == 0;
}

namespace {

// Wingdings "1": an open folder, its front flap tipped forward.
void openFolder(QPainter& p, double s, const QColor& colour)
{
    const QColor paper(0xF0, 0xD0, 0x70);
    p.setPen(QPen(colour, std::max(1.0, s / 14), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPainterPath back;
    back.moveTo(0.08 * s, 0.85 * s);
    back.lineTo(0.08 * s, 0.22 * s);
    back.lineTo(0.38 * s, 0.22 * s);
    back.lineTo(0.46 * s, 0.32 * s);
    back.lineTo(0.86 * s, 0.32 * s);
    back.lineTo(0.86 * s, 0.48 * s);
    p.setBrush(paper.darker(115));
    p.drawPath(back);
    QPainterPath flap;
    flap.moveTo(0.08 * s, 0.85 * s);
    flap.lineTo(0.26 * s, 0.48 * s);
    flap.lineTo(0.98 * s, 0.48 * s);
    flap.lineTo(0.80 * s, 0.85 * s);
    flap.closeSubpath();
    p.setBrush(paper);
    p.drawPath(flap);
}

} // namespace

QPixmap symbolGlyph(const QString& family, QChar character, int pixelSize, const QColor& colour)
{
    if (!isSymbolFont(family) || character != QLatin1Char('1') || pixelSize < 1)
        return {};
    QPixmap glyph(pixelSize, pixelSize);
    glyph.fill(Qt::transparent);
    QPainter p(&glyph);
    p.setRenderHint(QPainter::Antialiasing);
    openFolder(p, pixelSize, colour);
    return glyph;
}

} // namespace platform

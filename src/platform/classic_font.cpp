#include "classic_font.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QHash>

#include <cmath>

namespace platform {
namespace {

// How far one character advances, in ems, in the designed fixed-pitch families. OCR-A is set
// ten characters to the inch at twelve points: 0.6 em.
double designedAdvance(const QString& family)
{
    if (family.compare(QLatin1String("OCR A Extended"), Qt::CaseInsensitive) == 0)
        return 0.6;
    return 0; // proportional or unknown: taken as served
}

} // namespace

QFont classicFont(const QString& family, double points, bool bold)
{
    QFont font(family);
    font.setPointSizeF(points);
    font.setBold(bold);
    const double designed = designedAdvance(family);
    if (designed <= 0)
        return font;
    static QHash<QString, int> stretches; // by family, size and weight: measuring costs
    const QString key = family + QLatin1Char('/') + QString::number(points) + (bold ? QLatin1String("b") : QLatin1String(""));
    auto it = stretches.find(key);
    if (it == stretches.end()) {
        const QFontMetricsF metrics(font);
        const double served = metrics.horizontalAdvance(QLatin1Char('M'));
        const double wanted = designed * QFontInfo(font).pixelSize();
        it = stretches.insert(key, served > 0 ? int(std::floor(100 * wanted / served)) : 100);
    }
    if (*it != 100)
        font.setStretch(*it);
    return font;
}

} // namespace platform

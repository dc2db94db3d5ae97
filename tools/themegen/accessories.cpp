// The pictures the accessory windows carry with them (not theme files): the about box's
// emblem, and the hidden page's author picture and its crane at dusk.

#include "accessories.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QRandomGenerator>

#include <cmath>
#include <cstdio>

namespace {

constexpr QSize kAboutPicture(122, 131);   // the about box's stored bitmap
constexpr QSize kAuthorPicture(96, 112);   // the hidden page's author panel
constexpr QSize kSecretPicture(704, 338);  // the hidden page's picture, the window's shape
constexpr qint64 kSecretBytes = 83 * 1024; // "about 83 kilobytes"

void glider(QPainter& p, QPointF nose, double scale, const QColor& fill, const QColor& edge)
{
    QPainterPath path;
    path.moveTo(nose);
    path.lineTo(nose + QPointF(-42, -16) * scale);
    path.lineTo(nose + QPointF(-30, 2) * scale);
    path.lineTo(nose + QPointF(-46, 20) * scale);
    path.closeSubpath();
    p.setPen(QPen(edge, 1.5));
    p.setBrush(fill);
    p.drawPath(path);
}

QImage aboutPicture(const QString& font)
{
    QImage img(kAboutPicture, QImage::Format_RGB888);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, img.height());
    sky.setColorAt(0, QColor(0x10, 0x20, 0x60));
    sky.setColorAt(1, QColor(0x00, 0x80, 0x80));
    p.fillRect(img.rect(), sky);
    // A globe low in the picture, with its lines.
    const QRectF globe(11, 58, 100, 100);
    QRadialGradient shade(globe.center() - QPointF(20, 20), 70);
    shade.setColorAt(0, QColor(0x60, 0xC0, 0xD0));
    shade.setColorAt(1, QColor(0x00, 0x40, 0x60));
    p.setPen(Qt::NoPen);
    p.setBrush(shade);
    p.drawEllipse(globe);
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(QColor(255, 255, 255, 90), 1));
    for (int i = 1; i < 4; ++i)
        p.drawEllipse(QRectF(globe.center().x() - i * 16, globe.top(), i * 32, globe.height()));
    for (int i = 1; i < 4; ++i)
        p.drawLine(QPointF(globe.left() + 6, globe.top() + i * 25), QPointF(globe.right() - 6, globe.top() + i * 25));
    // The flight path and the glider over it.
    QPainterPath trail;
    trail.moveTo(8, 70);
    trail.cubicTo(30, 80, 50, 30, 92, 26);
    p.setPen(QPen(QColor(0xFF, 0xFF, 0xE0), 1.5, Qt::DotLine));
    p.drawPath(trail);
    glider(p, QPointF(112, 22), 0.7, QColor(0xF0, 0xF0, 0xF0), QColor(0x20, 0x20, 0x20));
    QFont big(font);
    big.setPixelSize(26);
    big.setBold(true);
    p.setFont(big);
    p.setPen(QColor(0xFF, 0xFF, 0xE0));
    p.drawText(QRect(0, 32, img.width(), 30), Qt::AlignCenter, QStringLiteral("GP"));
    QFont small(font);
    small.setPixelSize(10);
    p.setFont(small);
    p.setPen(Qt::white);
    p.drawText(QRect(0, img.height() - 16, img.width(), 14), Qt::AlignCenter, QStringLiteral("version 2.0"));
    p.setPen(QPen(QColor(0xFF, 0xFF, 0xFF, 160), 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(img.rect().adjusted(0, 0, -1, -1));
    return img;
}

QImage authorPicture()
{
    QImage img(kAuthorPicture, QImage::Format_RGB888);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient back(0, 0, img.width(), img.height());
    back.setColorAt(0, QColor(0x40, 0x50, 0x80));
    back.setColorAt(1, QColor(0x10, 0x18, 0x30));
    p.fillRect(img.rect(), back);
    // A head and shoulders in outline, lit from the left.
    QLinearGradient figure(0, 0, img.width(), 0);
    figure.setColorAt(0, QColor(0xC8, 0xD0, 0xE0));
    figure.setColorAt(1, QColor(0x70, 0x78, 0x90));
    p.setPen(Qt::NoPen);
    p.setBrush(figure);
    QPainterPath shoulders;
    shoulders.moveTo(8, img.height());
    shoulders.cubicTo(10, 78, 30, 72, 48, 72);
    shoulders.cubicTo(66, 72, 86, 78, 88, img.height());
    shoulders.closeSubpath();
    p.drawPath(shoulders);
    p.drawEllipse(QRectF(28, 18, 40, 48));
    p.setPen(QPen(QColor(255, 255, 255, 120), 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(img.rect().adjusted(0, 0, -1, -1));
    return img;
}

// A grey crane standing in shallow water at dusk, the sun half set behind reeds.
QImage secretScene()
{
    QImage img(kSecretPicture, QImage::Format_RGB32);
    const int w = img.width(), h = img.height();
    const int horizon = h * 60 / 100;
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, horizon);
    sky.setColorAt(0, QColor(0x1C, 0x12, 0x3C));
    sky.setColorAt(0.55, QColor(0x8A, 0x3A, 0x5A));
    sky.setColorAt(0.85, QColor(0xE8, 0x7A, 0x3A));
    sky.setColorAt(1, QColor(0xF8, 0xC0, 0x60));
    p.fillRect(QRect(0, 0, w, horizon), sky);
    // Clouds in long bands.
    QRandomGenerator random(0x6C1D);
    for (int i = 0; i < 14; ++i) {
        const double y = 20 + random.bounded(horizon * 0.6);
        const double x = random.bounded(double(w));
        QColor c(0xF0, 0x90, 0x80, 50 + random.bounded(60));
        p.setPen(Qt::NoPen);
        p.setBrush(c);
        p.drawEllipse(QRectF(x - 140, y, 200 + random.bounded(180.0), 6 + random.bounded(10.0)));
    }
    // The sun on the horizon.
    QRadialGradient glow(QPointF(w * 0.68, horizon), 160);
    glow.setColorAt(0, QColor(0xFF, 0xE8, 0xA0, 230));
    glow.setColorAt(0.25, QColor(0xFF, 0xB0, 0x50, 160));
    glow.setColorAt(1, QColor(0xFF, 0x90, 0x40, 0));
    p.setBrush(glow);
    p.drawRect(QRect(0, 0, w, horizon));
    p.setBrush(QColor(0xFF, 0xE0, 0x90));
    p.drawChord(QRectF(w * 0.68 - 38, horizon - 38, 76, 76), 0, 180 * 16);
    // Far hills.
    QPainterPath hills;
    hills.moveTo(0, horizon);
    for (int x = 0; x <= w; x += 8)
        hills.lineTo(x, horizon - 14 - 10 * std::sin(x / 55.0) - 6 * std::sin(x / 17.0 + 1));
    hills.lineTo(w, horizon);
    hills.closeSubpath();
    p.setBrush(QColor(0x3A, 0x20, 0x40));
    p.drawPath(hills);
    // Water: the sky mirrored and darkened, with ripples.
    QLinearGradient water(0, horizon, 0, h);
    water.setColorAt(0, QColor(0xC0, 0x70, 0x50));
    water.setColorAt(0.4, QColor(0x5A, 0x2A, 0x48));
    water.setColorAt(1, QColor(0x14, 0x0C, 0x24));
    p.fillRect(QRect(0, horizon, w, h - horizon), water);
    for (int i = 0; i < 900; ++i) {
        const double y = horizon + 2 + std::pow(random.generateDouble(), 1.6) * (h - horizon);
        const double x = random.bounded(double(w));
        const double len = 6 + random.bounded(40.0) * (y - horizon) / (h - horizon);
        const bool sunPath = std::abs(x - w * 0.68) < 60 + (y - horizon) * 0.4;
        QColor c = sunPath ? QColor(0xFF, 0xD0, 0x80, 150) : QColor(0xE0, 0x90, 0x90, 60);
        p.setPen(QPen(c, 1 + random.bounded(2)));
        p.drawLine(QPointF(x, y), QPointF(x + len, y));
    }
    // Reeds on the left and right.
    for (int i = 0; i < 70; ++i) {
        const double x = i < 40 ? random.bounded(150.0) : w - random.bounded(120.0);
        const double top = horizon - 30 - random.bounded(90.0);
        const double base = horizon + 30 + random.bounded(40.0);
        QPainterPath reed;
        reed.moveTo(x, base);
        reed.quadTo(x + 4, (top + base) / 2, x + 8 - random.bounded(16.0), top);
        p.setPen(QPen(QColor(0x18, 0x0C, 0x18), 1.5 + random.bounded(1.5)));
        p.setBrush(Qt::NoBrush);
        p.drawPath(reed);
        if (random.bounded(3) == 0) {
            p.setBrush(QColor(0x20, 0x10, 0x18));
            p.drawEllipse(QRectF(x + 6 - 3, top - 2, 6, 18));
        }
    }
    // The crane: body, neck, head and beak, and the leg it stands on.
    const QColor crane(0x16, 0x0E, 0x1A);
    p.setPen(QPen(crane, 3, Qt::SolidLine, Qt::RoundCap));
    const QPointF foot(w * 0.36, horizon + 62);
    p.drawLine(foot, foot + QPointF(4, -70));
    p.drawLine(foot + QPointF(4, -70), foot + QPointF(-2, -104));
    p.setPen(Qt::NoPen);
    p.setBrush(crane);
    QPainterPath body;
    body.moveTo(foot + QPointF(-40, -112));
    body.cubicTo(foot + QPointF(-20, -140), foot + QPointF(40, -140), foot + QPointF(52, -118));
    body.cubicTo(foot + QPointF(40, -96), foot + QPointF(-10, -92), foot + QPointF(-56, -96));
    body.closeSubpath();
    p.drawPath(body);
    QPainterPath neck;
    neck.moveTo(foot + QPointF(36, -128));
    neck.cubicTo(foot + QPointF(60, -160), foot + QPointF(34, -190), foot + QPointF(50, -214));
    p.setPen(QPen(crane, 6, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawPath(neck);
    p.setPen(Qt::NoPen);
    p.setBrush(crane);
    p.drawEllipse(QRectF(foot + QPointF(43, -223), QSizeF(16, 12)));
    QPainterPath beak;
    beak.moveTo(foot + QPointF(57, -219));
    beak.lineTo(foot + QPointF(86, -210));
    beak.lineTo(foot + QPointF(56, -213));
    beak.closeSubpath();
    p.drawPath(beak);
    p.setBrush(QColor(0xB0, 0x20, 0x20));
    p.drawEllipse(QRectF(foot + QPointF(46, -224), QSizeF(6, 4))); // the red crown
    // Its reflection, broken by the ripples.
    for (int y = 0; y < 60; y += 3) {
        p.setPen(QPen(QColor(0x16, 0x0E, 0x1A, 140 - y * 2), 2));
        const double x = foot.x() + 2 + (y % 2 ? 3 : -3);
        p.drawLine(QPointF(x - 10 + y / 4.0, foot.y() + y), QPointF(x + 12 - y / 5.0, foot.y() + y));
    }
    // A little grain, as a photograph has.
    p.end();
    for (int y = 0; y < h; ++y) {
        auto* line = reinterpret_cast<QRgb*>(img.scanLine(y));
        for (int x = 0; x < w; ++x) {
            const int n = int(random.bounded(17)) - 8;
            const QRgb c = line[x];
            line[x] = qRgb(std::clamp(qRed(c) + n, 0, 255), std::clamp(qGreen(c) + n, 0, 255), std::clamp(qBlue(c) + n, 0, 255));
        }
    }
    return img;
}

// The JPEG quality whose file comes closest to the wanted size.
QByteArray jpegNear(const QImage& img, qint64 bytes)
{
    QByteArray best;
    for (int quality = 30; quality <= 98; ++quality) {
        QByteArray data;
        QBuffer buffer(&data);
        buffer.open(QIODevice::WriteOnly);
        img.save(&buffer, "JPG", quality);
        if (best.isEmpty() || std::abs(data.size() - bytes) < std::abs(best.size() - bytes))
            best = data;
    }
    return best;
}

bool save(const QByteArray& data, const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(data) != data.size()) {
        std::fprintf(stderr, "themegen: cannot write %s\n", qPrintable(path));
        return false;
    }
    return true;
}

bool saveBmp(const QImage& img, const QString& path)
{
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    return img.save(&buffer, "BMP") && save(data, path);
}

} // namespace

bool writeAccessoryPictures(const QString& dir, const QString& font)
{
    QDir().mkpath(dir);
    return saveBmp(aboutPicture(font), dir + "/About.BMP") && saveBmp(authorPicture(), dir + "/Author.BMP") &&
           save(jpegNear(secretScene(), kSecretBytes), dir + "/SecretPlace.JPG");
}

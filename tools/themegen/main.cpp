// Makes the shipped themes, the program directory's Art sounds, the platform's default sound
// and the accessory windows' own pictures, all from code: bitmaps drawn with QPainter, waves
// synthesised, the intro music synthesised and encoded to MP3 with lame.
// Usage: themegen <source root>

#include "accessories.h"
#include "synth.h"

#include <QDir>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>

namespace {

// Sizes in pixels at 96 dpi (15 twips a pixel).
constexpr QSize kToolbarButton(87, 27); // 1305 x 405 twips
constexpr QSize kListButton(89, 25);    // 1335 x 375 twips
constexpr QSize kBackground(665, 473);  // the main window's client area, 9975 x 7095 twips
constexpr QSize kIntroPicture(457, 137); // leaves the intro its designed 240-twip margins
constexpr int kWaveRate = 22050;
constexpr int kMusicRate = 44100;

struct Look {
    QString name;
    QColor face, light, shadow, dark, text, pressedFace;
    QColor backTop, backBottom, grid, accent, logoText;
    double toneBase;   // the theme's sounds are pitched from here
    double brightness; // and coloured by this
    std::vector<Note> jingle;
};

QString g_font = QStringLiteral("Monospace");

enum class Icon { Back, Forward, Go, Home, Refresh, Stop, Add, Delete };

void drawIcon(QPainter& p, Icon icon, QRectF box, const QColor& colour)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(colour, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(colour);
    const QPointF c = box.center();
    const double r = box.height() / 2;
    QPainterPath path;
    switch (icon) {
    case Icon::Back:
        path.moveTo(c.x() - r, c.y());
        path.lineTo(c.x() + r * 0.6, c.y() - r);
        path.lineTo(c.x() + r * 0.6, c.y() + r);
        path.closeSubpath();
        p.drawPath(path);
        break;
    case Icon::Forward:
        path.moveTo(c.x() + r, c.y());
        path.lineTo(c.x() - r * 0.6, c.y() - r);
        path.lineTo(c.x() - r * 0.6, c.y() + r);
        path.closeSubpath();
        p.drawPath(path);
        break;
    case Icon::Go:
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(colour, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        for (double dx : {-r * 0.5, r * 0.3}) {
            p.drawPolyline(QPolygonF{QPointF(c.x() + dx - r * 0.35, c.y() - r * 0.8), QPointF(c.x() + dx + r * 0.35, c.y()),
                                     QPointF(c.x() + dx - r * 0.35, c.y() + r * 0.8)});
        }
        break;
    case Icon::Home:
        path.moveTo(c.x(), c.y() - r);
        path.lineTo(c.x() + r, c.y());
        path.lineTo(c.x() + r * 0.65, c.y());
        path.lineTo(c.x() + r * 0.65, c.y() + r);
        path.lineTo(c.x() - r * 0.65, c.y() + r);
        path.lineTo(c.x() - r * 0.65, c.y());
        path.lineTo(c.x() - r, c.y());
        path.closeSubpath();
        p.drawPath(path);
        break;
    case Icon::Refresh: {
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(colour, 2.0, Qt::SolidLine, Qt::FlatCap));
        const QRectF arc(c.x() - r * 0.8, c.y() - r * 0.8, r * 1.6, r * 1.6);
        p.drawArc(arc, 60 * 16, 270 * 16);
        p.setBrush(colour);
        p.setPen(Qt::NoPen);
        const QPointF tip(c.x() + r * 0.4, c.y() - r * 0.7);
        p.drawPolygon(QPolygonF{tip + QPointF(-r * 0.5, -r * 0.45), tip + QPointF(r * 0.45, 0), tip + QPointF(-r * 0.35, r * 0.55)});
        break;
    }
    case Icon::Stop:
        p.drawRect(QRectF(c.x() - r * 0.75, c.y() - r * 0.75, r * 1.5, r * 1.5));
        break;
    case Icon::Add:
        p.setPen(QPen(colour, 2.4, Qt::SolidLine, Qt::FlatCap));
        p.drawLine(QPointF(c.x() - r * 0.8, c.y()), QPointF(c.x() + r * 0.8, c.y()));
        p.drawLine(QPointF(c.x(), c.y() - r * 0.8), QPointF(c.x(), c.y() + r * 0.8));
        break;
    case Icon::Delete:
        p.setPen(QPen(colour, 2.4, Qt::SolidLine, Qt::FlatCap));
        p.drawLine(QPointF(c.x() - r * 0.7, c.y() - r * 0.7), QPointF(c.x() + r * 0.7, c.y() + r * 0.7));
        p.drawLine(QPointF(c.x() + r * 0.7, c.y() - r * 0.7), QPointF(c.x() - r * 0.7, c.y() + r * 0.7));
        break;
    }
    p.restore();
}

// A bevelled button: raised when released, sunk and shifted by a pixel when pressed.
QImage button(const Look& look, QSize size, const QString& label, Icon icon, bool pressed)
{
    QImage img(size, QImage::Format_RGB32);
    QPainter p(&img);
    QLinearGradient face(0, 0, 0, size.height());
    const QColor base = pressed ? look.pressedFace : look.face;
    face.setColorAt(0, base.lighter(pressed ? 100 : 115));
    face.setColorAt(1, base.darker(pressed ? 110 : 100));
    p.fillRect(img.rect(), face);

    const QRect r = img.rect();
    const QColor topLeft = pressed ? look.dark : look.light;
    const QColor bottomRight = pressed ? look.light : look.dark;
    const QColor innerBottomRight = pressed ? look.face : look.shadow;
    p.setPen(topLeft);
    p.drawLine(r.topLeft(), r.topRight());
    p.drawLine(r.topLeft(), r.bottomLeft());
    p.setPen(bottomRight);
    p.drawLine(r.bottomLeft(), r.bottomRight());
    p.drawLine(r.topRight(), r.bottomRight());
    p.setPen(pressed ? look.shadow : look.light.darker(105));
    p.drawLine(r.topLeft() + QPoint(1, 1), r.topRight() + QPoint(-1, 1));
    p.drawLine(r.topLeft() + QPoint(1, 1), r.bottomLeft() + QPoint(1, -1));
    p.setPen(innerBottomRight);
    p.drawLine(r.bottomLeft() + QPoint(1, -1), r.bottomRight() + QPoint(-1, -1));
    p.drawLine(r.topRight() + QPoint(-1, 1), r.bottomRight() + QPoint(-1, -1));

    const int shift = pressed ? 1 : 0;
    QFont font(g_font);
    font.setPixelSize(size.height() <= 25 ? 11 : 12);
    p.setFont(font);
    const int iconSize = size.height() - 12;
    const int textWidth = QFontMetrics(font).horizontalAdvance(label);
    const int total = iconSize + 5 + textWidth;
    const int x0 = (size.width() - total) / 2 + shift;
    drawIcon(p, icon, QRectF(x0, 6 + shift, iconSize, iconSize), look.accent);
    p.setPen(look.text);
    p.drawText(QRect(x0 + iconSize + 5, shift, textWidth + 2, size.height()), Qt::AlignVCenter | Qt::AlignLeft, label);
    return img;
}

QImage background(const Look& look)
{
    QImage img(kBackground, QImage::Format_RGB32);
    QPainter p(&img);
    QLinearGradient g(0, 0, 0, kBackground.height());
    g.setColorAt(0, look.backTop);
    g.setColorAt(1, look.backBottom);
    p.fillRect(img.rect(), g);
    p.setPen(look.grid);
    for (int x = 0; x < kBackground.width(); x += 16)
        p.drawLine(x, 0, x, kBackground.height());
    for (int y = 0; y < kBackground.height(); y += 16)
        p.drawLine(0, y, kBackground.width(), y);
    // the toolbar strip's band
    p.fillRect(QRect(0, 0, kBackground.width(), 34), QColor(look.face.red(), look.face.green(), look.face.blue(), 110));
    p.setPen(look.light);
    p.drawLine(0, 34, kBackground.width(), 34);
    QFont font(g_font);
    font.setPixelSize(46);
    p.setFont(font);
    QColor mark = look.logoText;
    mark.setAlpha(40);
    p.setPen(mark);
    p.drawText(img.rect().adjusted(0, 0, -14, -8), Qt::AlignRight | Qt::AlignBottom, QStringLiteral("GLIDEPATH"));
    return img;
}

QImage intro(const Look& look)
{
    QImage img(kIntroPicture, QImage::Format_RGB32);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient g(0, 0, kIntroPicture.width(), kIntroPicture.height());
    g.setColorAt(0, look.backTop);
    g.setColorAt(1, look.backBottom);
    p.fillRect(img.rect(), g);
    p.setPen(QPen(look.light, 2));
    p.drawRect(img.rect().adjusted(1, 1, -2, -2));

    // the flight path and the glider
    QPainterPath trail;
    trail.moveTo(18, 112);
    trail.cubicTo(70, 120, 90, 40, 150, 38);
    p.setPen(QPen(look.accent, 2, Qt::DotLine));
    p.setBrush(Qt::NoBrush);
    p.drawPath(trail);
    QPainterPath glider;
    glider.moveTo(150, 38);
    glider.lineTo(108, 22);
    glider.lineTo(120, 40);
    glider.lineTo(104, 58);
    glider.closeSubpath();
    p.setPen(QPen(look.dark, 1.5));
    p.setBrush(look.face.lighter(130));
    p.drawPath(glider);

    QFont big(g_font);
    big.setPixelSize(40);
    p.setFont(big);
    p.setPen(look.dark);
    p.drawText(QRect(172, 26, 280, 52), Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("Glidepath"));
    p.setPen(look.logoText);
    p.drawText(QRect(170, 24, 280, 52), Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("Glidepath"));
    QFont small(g_font);
    small.setPixelSize(13);
    p.setFont(small);
    p.setPen(look.face.lighter(110));
    p.drawText(QRect(174, 78, 270, 20), Qt::AlignLeft, QStringLiteral("version 2.0"));
    p.setPen(look.logoText);
    p.drawText(QRect(174, 98, 270, 20), Qt::AlignLeft, QStringLiteral("a themable web browser"));
    return img;
}

// The program's icon for the desktop's menu: the intro's glider on its flight path, on a rounded
// tile in the default theme's colours, drawn at the given size.
QImage appIcon(const Look& look, int size)
{
    QImage img(size, size, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / 64.0, size / 64.0);
    QLinearGradient g(0, 0, 64, 64);
    g.setColorAt(0, look.backTop);
    g.setColorAt(1, look.backBottom);
    p.setPen(QPen(look.dark, 1.5));
    p.setBrush(g);
    p.drawRoundedRect(QRectF(2, 2, 60, 60), 11, 11);

    QPainterPath trail;
    trail.moveTo(8, 54);
    trail.cubicTo(22, 56, 30, 30, 50, 20);
    p.setPen(QPen(look.accent.lighter(150), 3, Qt::DotLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawPath(trail);
    QPainterPath glider;
    glider.moveTo(56, 14);
    glider.lineTo(30, 10);
    glider.lineTo(38, 22);
    glider.lineTo(26, 36);
    glider.closeSubpath();
    p.setPen(QPen(look.dark, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(look.face.lighter(130));
    p.drawPath(glider);
    return img;
}

bool saveBmp(const QImage& img, const QString& path)
{
    if (!img.save(path, "BMP")) {
        std::fprintf(stderr, "themegen: cannot write %s\n", qPrintable(path));
        return false;
    }
    return true;
}

bool writeSounds(const Look& look, const QString& dir, const QString& lame)
{
    const double f = look.toneBase;
    const double b = look.brightness;
    Synth click(kWaveRate);
    click.click(0.045);
    Synth open(kWaveRate);
    open.play({{f, 0.09, b}, {f * 1.26, 0.09, b}, {f * 1.5, 0.22, b}});
    Synth close(kWaveRate);
    close.play({{f * 1.5, 0.09, b}, {f * 1.26, 0.09, b}, {f, 0.22, b}});
    bool ok = click.save(dir + "/Click.WAV") && open.save(dir + "/OpenWIN.WAV") && close.save(dir + "/CloseWIN.WAV");

    Synth music(kMusicRate);
    music.play(look.jingle, 0.45);
    QTemporaryDir tmp;
    const QString wav = tmp.filePath("intro.wav");
    ok = ok && music.save(wav);
    const int rc = QProcess::execute(lame, {"--quiet", "-m", "m", "-b", "64", "--tt", "Glidepath " + look.name,
                                            wav, dir + "/Intro.MP3"});
    if (rc != 0)
        std::fprintf(stderr, "themegen: lame failed for %s\n", qPrintable(look.name));
    return ok && rc == 0;
}

bool writeTheme(const Look& look, const QString& dir, const QString& lame)
{
    QDir().mkpath(dir);
    struct Item { const char* file; const char* label; Icon icon; QSize size; };
    const Item items[] = {
        {"Go", "Go", Icon::Go, kToolbarButton},           {"Back", "Back", Icon::Back, kToolbarButton},
        {"Forward", "Forward", Icon::Forward, kToolbarButton}, {"Refresh", "Refresh", Icon::Refresh, kToolbarButton},
        {"Stop", "Stop", Icon::Stop, kToolbarButton},     {"Home", "Home", Icon::Home, kToolbarButton},
        {"Add", "Add", Icon::Add, kListButton},           {"Delete", "Delete", Icon::Delete, kListButton},
    };
    bool ok = true;
    for (const Item& item : items) {
        ok = ok && saveBmp(button(look, item.size, item.label, item.icon, false), dir + "/" + item.file + "UP.BMP");
        ok = ok && saveBmp(button(look, item.size, item.label, item.icon, true), dir + "/" + item.file + "DOWN.BMP");
    }
    ok = ok && saveBmp(background(look), dir + "/Main.BMP");
    ok = ok && saveBmp(intro(look), dir + "/Intro.BMP");
    return ok && writeSounds(look, dir, lame);
}

std::vector<Note> melody(std::initializer_list<double> semitones, double base, double beat, double brightness)
{
    std::vector<Note> notes;
    for (const double s : semitones)
        notes.push_back({s < -50 ? 0 : base * std::pow(2.0, s / 12.0), beat, brightness});
    notes.back().seconds *= 3;
    return notes;
}

} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: themegen <source root>\n");
        return 2;
    }
    const QString root = QString::fromLocal8Bit(argv[1]);
    const QString lame = QStringLiteral("lame");
    const int id = QFontDatabase::addApplicationFont("/usr/share/fonts/truetype/ocr-a/OCRA.ttf");
    if (id >= 0)
        g_font = QFontDatabase::applicationFontFamilies(id).value(0, g_font);

    const Look classic{
        "Default",
        QColor(0xC0, 0xC0, 0xC0), QColor(0xFF, 0xFF, 0xFF), QColor(0x80, 0x80, 0x80), QColor(0x20, 0x20, 0x20),
        QColor(0x10, 0x10, 0x40), QColor(0xA8, 0xA8, 0xB0),
        QColor(0x00, 0x80, 0x80), QColor(0x00, 0x40, 0x60), QColor(0x10, 0x90, 0x90), QColor(0x00, 0x00, 0x90),
        QColor(0xFF, 0xFF, 0xE0),
        523.25, 0.35,
        melody({0, 4, 7, 12, 7, 9, 11, 12, -99, 7, 12, 16}, 392.0, 0.28, 0.3),
    };
    const Look midnight{
        "Midnight",
        QColor(0x22, 0x26, 0x3A), QColor(0x5A, 0x66, 0x9A), QColor(0x14, 0x16, 0x24), QColor(0x02, 0x02, 0x08),
        QColor(0x7C, 0xFC, 0xC8), QColor(0x12, 0x14, 0x20),
        QColor(0x0A, 0x0A, 0x1E), QColor(0x00, 0x00, 0x00), QColor(0x16, 0x18, 0x38), QColor(0x40, 0xE0, 0xFF),
        QColor(0xB0, 0xFF, 0xE0),
        392.0, 0.7,
        melody({0, 3, 7, 10, 12, 10, 7, 3, -99, 0, 7, 12}, 220.0, 0.3, 0.6),
    };

    // First: they need no encoder.
    const bool pictures = writeAccessoryPictures(root + "/src/accessories/resources", g_font) &&
                          appIcon(classic, 256).save(root + "/program/glidepath.png");
    bool ok = pictures && writeTheme(classic, root + "/themes/Default", lame) && writeTheme(midnight, root + "/themes/Midnight", lame);

    QDir().mkpath(root + "/art");
    Synth maxim(kWaveRate);
    maxim.sweep(300, 1200, 0.35);
    Synth minim(kWaveRate);
    minim.sweep(1200, 300, 0.35);
    ok = ok && maxim.save(root + "/art/OpenWin.WAV") && minim.save(root + "/art/CloseWin.WAV");

    Synth beep(kWaveRate);
    beep.play({{880, 0.12, 0.2}, {660, 0.16, 0.2}});
    ok = ok && beep.save(root + "/src/platform/resources/default.wav");
    return ok ? 0 : 1;
}

#include "real_program.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTest>

namespace {

void copyTree(const QString& from, const QString& to)
{
    QDir().mkpath(to);
    QDirIterator it(from, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString target = to + source.mid(from.size());
        if (it.fileInfo().isDir())
            QDir().mkpath(target);
        else
            QFile::copy(source, target);
    }
}

} // namespace

RealProgram::RealProgram()
{
    copyTree(QStringLiteral(GLIDEPATH_PROGRAM_DIR), m_dir.path());
    m_process.setProgram(path(QStringLiteral("glidepath")));
    m_process.setWorkingDirectory(m_dir.path());
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("QT_QPA_PLATFORM")); // the program runs on the screen, as on a desktop
    env.insert(QStringLiteral("QT_LOGGING_RULES"),
               QStringLiteral("glidepath.caption=true;glidepath.geometry=true;glidepath.text=true;glidepath.timing=true"));
    m_process.setProcessEnvironment(env);
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    QObject::connect(&m_process, &QProcess::readyReadStandardError, [this] { m_log += m_process.readAllStandardError(); });
}

RealProgram::~RealProgram()
{
    if (QTest::currentTestFailed()) {
        // What the screen showed and what the program said, for the failure's report.
        const QString shot = QDir::tempPath() + QStringLiteral("/glidepath-e2e-") +
                             QString::fromLatin1(QTest::currentTestFunction()) + QStringLiteral(".png");
        QProcess::execute(QStringLiteral("import"), {"-window", "root", shot});
        qWarning("screen: %s\nprogram's last words:\n%s", qPrintable(shot), errorOutput().right(3000).constData());
    }
    if (running()) {
        m_process.kill();
        m_process.waitForFinished(5000);
    }
}

QString RealProgram::path(const QString& name) const { return m_dir.path() + QLatin1Char('/') + name; }

void RealProgram::write(const QString& name, const QByteArray& bytes) const
{
    QFile f(path(name));
    if (f.open(QIODevice::WriteOnly))
        f.write(bytes);
}

QByteArray RealProgram::read(const QString& name) const
{
    QFile f(path(name));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QByteArray RealProgram::errorOutput()
{
    if (running())
        m_log += m_process.readAllStandardError();
    return m_log;
}

void RealProgram::useTheme(const QString& theme)
{
    write(QStringLiteral("ThemeDir.INI"), "[Theme Directory]\r\nDIR=" + path(theme).toLocal8Bit() + "\r\n");
}

void RealProgram::start()
{
    m_process.start();
    if (!m_process.waitForStarted(10000))
        qWarning("glidepath did not start: %s", qPrintable(m_process.errorString()));
}

bool RealProgram::waitForExit(int ms)
{
    return QTest::qWaitFor([&] { return !running(); }, ms);
}

QStringList RealProgram::log(const QString& category)
{
    errorOutput();
    const QByteArray prefix = "glidepath." + category.toUtf8() + ": ";
    QStringList messages;
    for (const QByteArray& line : m_log.split('\n'))
        if (line.startsWith(prefix))
            messages << QString::fromUtf8(line.mid(prefix.size()));
    return messages;
}

QStringList RealProgram::captions()
{
    QStringList result;
    for (const QString& line : log(QStringLiteral("caption")))
        result << line.section(QLatin1String(": "), 1);
    return result;
}

bool RealProgram::waitForCaption(const QString& caption, int ms)
{
    return QTest::qWaitFor([&] { return captions().contains(caption); }, ms);
}

QStringList RealProgram::moments()
{
    QStringList result;
    for (const QString& line : log(QStringLiteral("timing")))
        result << line.section(QLatin1Char(' '), 1);
    return result;
}

bool RealProgram::waitForMoment(const QString& moment, qsizetype from, int ms)
{
    return QTest::qWaitFor([&] { return moments().indexOf(moment, from) >= 0; }, ms);
}

int RealProgram::lastSize(const QString& control, const QString& side)
{
    const QStringList sizes = log(QStringLiteral("geometry")).filter(QRegularExpression("^" + QRegularExpression::escape(control + " " + side + " ")));
    return sizes.isEmpty() ? -1 : sizes.last().section(QLatin1Char(' '), 2).toInt();
}

QString RealProgram::lastText(const QString& control)
{
    const QStringList texts = log(QStringLiteral("text")).filter(QRegularExpression("^" + QRegularExpression::escape(control + ": ")));
    return texts.isEmpty() ? QStringLiteral("<none>") : texts.last().mid(control.size() + 2);
}

QString RealProgram::xdo(const QStringList& args) const
{
    QProcess p;
    p.start(QStringLiteral("xdotool"), args);
    p.waitForFinished(30000);
    return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
}

unsigned long RealProgram::waitForWindow(const QString& title, int ms)
{
    return waitForWindowLike(QLatin1Char('^') + QRegularExpression::escape(title) + QLatin1Char('$'), ms);
}

unsigned long RealProgram::activeWindow() const
{
    return xdo({"getactivewindow"}).toULong();
}

unsigned long RealProgram::waitForActiveOtherThan(unsigned long window, int ms) const
{
    // Asked once per look: the window manager may pass the focus about while a window maps.
    unsigned long found = 0;
    (void)QTest::qWaitFor([&] {
        const unsigned long active = activeWindow();
        found = active != window && active && inner(active).width() > 100 ? active : 0;
        return found != 0;
    }, ms);
    return found;
}

bool RealProgram::waitForGone(unsigned long window, int ms)
{
    return QTest::qWaitFor([&] {
        QProcess p;
        p.start(QStringLiteral("xwininfo"), {"-id", QString::number(window)});
        p.waitForFinished(5000);
        const QString info = QString::fromUtf8(p.readAllStandardOutput());
        return p.exitCode() != 0 || !info.contains(QLatin1String("IsViewable"));
    }, ms);
}

unsigned long RealProgram::waitForWindowLike(const QString& pattern, int ms, QSize atLeast)
{
    unsigned long found = 0;
    (void)QTest::qWaitFor([&] {
        const QStringList ids = xdo({"search", "--all", "--onlyvisible", "--pid", QString::number(m_process.processId()),
                                     "--name", pattern}).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString& id : ids) {
            const QSize size = inner(id.toULong()).size();
            if (size.width() >= atLeast.width() && size.height() >= atLeast.height())
                found = id.toULong();
        }
        return found != 0;
    }, ms);
    return found;
}

QRect RealProgram::inner(unsigned long window) const
{
    // xwininfo tells where the window itself lies on the screen, whatever frame surrounds it.
    QProcess p;
    p.start(QStringLiteral("xwininfo"), {"-id", QString::number(window)});
    p.waitForFinished(5000);
    QMap<QString, int> v;
    for (const QString& line : QString::fromUtf8(p.readAllStandardOutput()).split(QLatin1Char('\n')))
        v[line.section(QLatin1Char(':'), 0, 0).trimmed()] = line.section(QLatin1Char(':'), 1).trimmed().toInt();
    return QRect(v.value("Absolute upper-left X"), v.value("Absolute upper-left Y"), v.value("Width"), v.value("Height"));
}

QRect RealProgram::frame(unsigned long window) const
{
    // The window manager's frame extents: left, right, top, bottom.
    QProcess p;
    p.start(QStringLiteral("xprop"), {"-id", QString::number(window), "_NET_FRAME_EXTENTS"});
    p.waitForFinished(5000);
    const QString out = QString::fromUtf8(p.readAllStandardOutput());
    const QStringList parts = out.section(QLatin1Char('='), 1).split(QLatin1Char(','), Qt::SkipEmptyParts);
    const QRect r = inner(window);
    if (parts.size() != 4)
        return r;
    return r.adjusted(-parts[0].trimmed().toInt(), -parts[2].trimmed().toInt(), parts[1].trimmed().toInt(),
                      parts[3].trimmed().toInt());
}

QRect RealProgram::screen() const
{
    const QStringList wh = xdo({"getdisplaygeometry"}).split(QLatin1Char(' '));
    return QRect(0, 0, wh.value(0).toInt(), wh.value(1).toInt());
}

void RealProgram::click(unsigned long window, QPoint inside, int button)
{
    const QRect r = inner(window);
    xdo({"mousemove", "--sync", QString::number(r.x() + inside.x()), QString::number(r.y() + inside.y())});
    xdo({"click", QString::number(button)});
}

void RealProgram::clickScreen(QPoint at, int button)
{
    xdo({"mousemove", "--sync", QString::number(at.x()), QString::number(at.y())});
    xdo({"click", QString::number(button)});
}

void RealProgram::doubleClickScreen(QPoint at)
{
    xdo({"mousemove", "--sync", QString::number(at.x()), QString::number(at.y())});
    xdo({"click", "--repeat", "2", "--delay", "80", "1"});
}

void RealProgram::activate(unsigned long window)
{
    xdo({"windowactivate", "--sync", QString::number(window)});
}

void RealProgram::key(const QString& keys)
{
    xdo({"key", "--clearmodifiers", keys});
}

void RealProgram::type(const QString& text)
{
    xdo({"type", "--delay", "20", text});
}

void RealProgram::resize(unsigned long window, QSize size)
{
    xdo({"windowsize", "--sync", QString::number(window), QString::number(size.width()), QString::number(size.height())});
}

unsigned long RealProgram::openMainWindow(bool settled)
{
    const QString mainTitle = QStringLiteral("^Glidepath - \\[");
    const qsizetype before = captions().size(); // an earlier run in this folder wrote these
    const qsizetype moment = moments().size();
    start();
    // The intro stands in the middle of the screen, above everything, until it is clicked.
    if (!waitForMoment(QStringLiteral("painted IntroFRM"), moment))
        return 0;
    clickScreen(screen().center());
    if (!settled)
        return waitForWindowLike(mainTitle, 30000);
    if (!QTest::qWaitFor([&] {
            const QStringList written = captions().mid(before);
            const qsizetype done = written.indexOf(QLatin1String("Glidepath - [Done Loading Document]"));
            for (qsizetype i = done + 1; done >= 0 && i < written.size(); ++i)
                if (written[i].startsWith(QLatin1String("Glidepath - [Going to: ")))
                    return true;
            return false;
        }, 30000))
        return 0;
    return waitForWindowLike(mainTitle);
}

void RealProgram::chooseMenu(unsigned long main, const QStringList& keys)
{
    activate(main);
    click(main, QPoint(20, 8));
    for (const QString& k : keys)
        key(k);
}

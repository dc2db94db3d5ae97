#include "real_program.h"

#include "support/http_server.h"

#include <QDir>
#include <QDirIterator>
#include <QImage>
#include <QRegularExpression>
#include <QTest>

RealProgram::RealProgram()
{
    const QString from = QStringLiteral(GLIDEPATH_PROGRAM_DIR);
    QDirIterator it(from, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString target = m_dir.path() + source.mid(from.size());
        it.fileInfo().isDir() ? (void)QDir().mkpath(target) : (void)QFile::copy(source, target);
    }
    m_process.setProgram(path(QStringLiteral("glidepath")));
    m_process.setWorkingDirectory(m_dir.path());
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("QT_QPA_PLATFORM")); // the program chooses, as on a desktop
    env.insert(QStringLiteral("QT_LOGGING_RULES"),
               QStringLiteral("glidepath.caption=true;glidepath.geometry=true;glidepath.text=true;glidepath.timing=true"));
    m_process.setProcessEnvironment(env);
    QObject::connect(&m_process, &QProcess::readyReadStandardError, [this] { m_log += m_process.readAllStandardError(); });
}

RealProgram::~RealProgram()
{
    if (QTest::currentTestFailed()) {
        // What the screen showed and what the program said, for the failure's report.
        const QString shot = QDir::tempPath() + "/glidepath-e2e-" + QTest::currentTestFunction() + ".png";
        screenShot().save(shot);
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

void RealProgram::useTheme(const QString& theme)
{
    write(QStringLiteral("ThemeDir.INI"), "[Theme Directory]\r\nDIR=" + path(theme).toLocal8Bit() + "\r\n");
}

void RealProgram::setEnvironment(const QString& name, const QString& value)
{
    QProcessEnvironment env = m_process.processEnvironment();
    value.isEmpty() ? env.remove(name) : env.insert(name, value);
    m_process.setProcessEnvironment(env);
}

void RealProgram::start()
{
    m_process.start();
    if (!m_process.waitForStarted(10000))
        qWarning("glidepath did not start: %s", qPrintable(m_process.errorString()));
}

bool RealProgram::waitForExit(int ms) { return QTest::qWaitFor([&] { return !running(); }, ms); }

QByteArray RealProgram::errorOutput()
{
    if (running())
        m_log += m_process.readAllStandardError();
    return m_log;
}

QStringList RealProgram::log(const QString& category)
{
    const QByteArray prefix = "glidepath." + category.toUtf8() + ": ";
    QStringList messages;
    for (const QByteArray& line : errorOutput().split('\n'))
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

QStringList RealProgram::playing() const
{
    QStringList names;
    for (const QString& block : run(QStringLiteral("pactl"), {"list", "sink-inputs"}).split(QStringLiteral("Sink Input #")))
        if (block.contains(QLatin1String("application.name = \"glidepath\"")) && block.contains(QLatin1String("Corked: no")))
            names << block.section(QLatin1String("media.name = \""), 1).section(QLatin1Char('"'), 0, 0);
    return names;
}

QString RealProgram::run(const QString& tool, const QStringList& args) const
{
    QProcess p;
    p.setProcessEnvironment(m_process.processEnvironment()); // on the program's display
    p.start(tool, args);
    p.waitForFinished(30000);
    return p.exitCode() == 0 ? QString::fromUtf8(p.readAllStandardOutput()).trimmed() : QString();
}

unsigned long RealProgram::waitForWindow(const QString& title, int ms)
{
    return waitForWindowLike(QLatin1Char('^') + QRegularExpression::escape(title) + QLatin1Char('$'), ms);
}

unsigned long RealProgram::waitForWindowLike(const QString& pattern, int ms, QSize atLeast)
{
    unsigned long found = 0;
    (void)QTest::qWaitFor([&] {
        const QString pid = QString::number(m_process.processId());
        for (const QString& id : run("xdotool", {"search", "--all", "--onlyvisible", "--pid", pid, "--name", pattern}).split('\n', Qt::SkipEmptyParts))
            if (const QSize size = inner(id.toULong()).size(); size.width() >= atLeast.width() && size.height() >= atLeast.height())
                found = id.toULong();
        return found != 0;
    }, ms);
    return found;
}

bool RealProgram::waitForGone(unsigned long window, int ms)
{
    return QTest::qWaitFor([&] { return !run("xwininfo", {"-id", QString::number(window)}).contains(QLatin1String("IsViewable")); }, ms);
}

unsigned long RealProgram::activeWindow() const { return run("xdotool", {"getactivewindow"}).toULong(); }

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

QRect RealProgram::inner(unsigned long window) const
{
    // xwininfo tells where the window itself lies on the screen, whatever frame surrounds it.
    QMap<QString, int> v;
    for (const QString& line : run("xwininfo", {"-id", QString::number(window)}).split('\n'))
        v[line.section(':', 0, 0).trimmed()] = line.section(':', 1).trimmed().toInt();
    return QRect(v.value("Absolute upper-left X"), v.value("Absolute upper-left Y"), v.value("Width"), v.value("Height"));
}

QRect RealProgram::frame(unsigned long window) const
{
    // The window manager's frame extents: left, right, top, bottom.
    const QStringList e = run("xprop", {"-id", QString::number(window), "_NET_FRAME_EXTENTS"}).section('=', 1).split(',', Qt::SkipEmptyParts);
    const QRect r = inner(window);
    return e.size() != 4 ? r : r.adjusted(-e[0].trimmed().toInt(), -e[2].trimmed().toInt(), e[1].trimmed().toInt(), e[3].trimmed().toInt());
}

QRect RealProgram::screen() const
{
    const QStringList wh = run("xdotool", {"getdisplaygeometry"}).split(' ');
    return QRect(0, 0, wh.value(0).toInt(), wh.value(1).toInt());
}

QString RealProgram::title(unsigned long window) const
{
    return run("xprop", {"-id", QString::number(window), "_NET_WM_NAME"}).section('"', 1, -2);
}

QImage RealProgram::screenShot() const
{
    QTemporaryDir dir;
    run(QStringLiteral("import"), {"-window", "root", dir.filePath("screen.png")});
    return QImage(dir.filePath("screen.png"));
}

void RealProgram::click(unsigned long window, QPoint inside, int button) { clickScreen(inner(window).topLeft() + inside, button); }

void RealProgram::clickScreen(QPoint at, int button)
{
    run("xdotool", {"mousemove", "--sync", QString::number(at.x()), QString::number(at.y()), "click", QString::number(button)});
}

void RealProgram::doubleClickScreen(QPoint at)
{
    run("xdotool", {"mousemove", "--sync", QString::number(at.x()), QString::number(at.y()), "click", "--repeat", "2", "--delay", "80", "1"});
}

void RealProgram::activate(unsigned long window) { run("xdotool", {"windowactivate", "--sync", QString::number(window)}); }
void RealProgram::key(const QString& keys) { run("xdotool", {"key", "--clearmodifiers", keys}); }
void RealProgram::type(const QString& text) { run("xdotool", {"type", "--delay", "20", text}); }

void RealProgram::resize(unsigned long window, QSize size)
{
    run("xdotool", {"windowsize", "--sync", QString::number(window), QString::number(size.width()), QString::number(size.height())});
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
            return done >= 0 && !written.mid(done + 1).filter(QRegularExpression("^Glidepath - \\[Going to: ")).isEmpty();
        }, 30000))
        return 0;
    return waitForWindowLike(mainTitle);
}

unsigned long RealProgram::openOn(const HttpServer& server, const QString& page)
{
    useTheme();
    write(QStringLiteral("HomePage.TXT"), server.url(page).toString().toLatin1() + "\r\n");
    return openMainWindow();
}

void RealProgram::chooseMenu(unsigned long main, const QStringList& keys)
{
    activate(main);
    click(main, QPoint(20, 8));
    for (const QString& k : keys)
        key(k);
}

unsigned long RealProgram::answerFileDialog(const QString& file)
{
    const unsigned long dialog = waitForWindowLike(QStringLiteral("^(Open|Save As|Save)$|^$"), 10000, QSize(300, 200));
    if (dialog)
        activate(dialog);
    key(QStringLiteral("ctrl+a"));
    type(file);
    key(QStringLiteral("Return"));
    return dialog;
}

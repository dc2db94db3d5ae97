#include "program.h"

#include "browser/main_window.h"
#include "shared/statf.h"
#include "startup/theme_selector.h"
#include "platform/menu.h"
#include "platform/sounds.h"
#include "platform/web_browser.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTest>
#include <QWebEnginePage>
#include <QWebEngineView>

using namespace platform;

const QString kThemes = QStringLiteral(GLIDEPATH_SOURCE_DIR "/themes");
const QString kDone = QStringLiteral("Glidepath - [Done Loading Document]");

namespace {

bool shown(const QString& name)
{
    for (QWidget* w : QApplication::topLevelWidgets())
        if (Form* f = Form::of(w); f && f->objectName() == name && w->isVisible())
            return true;
    return false;
}
} // namespace

Program::Program() : Program(Setup{}) {}

Program::Program(const Setup& setup) : theme(setup.theme)
{
    write(QStringLiteral("ThemeDir.INI"), "[Theme Directory]\r\nDIR=" + theme.toLocal8Bit() + "\r\n");
    write(QStringLiteral("HomePage.TXT"), setup.home);
    write(QStringLiteral("FavPlaces.INI"), "");
    if (!setup.fontColour.isNull())
        write(QStringLiteral("ForeC.INI"), setup.fontColour);
    QObject::connect(&runtime().sounds(), &WavePlayer::requested, [this](const QString& path) {
        // The theme's sounds by name; others by their path in the program directory, or whole.
        QString entry = path.startsWith(theme + QLatin1Char('/')) ? QFileInfo(path).fileName()
                        : path.startsWith(AppPath() + QLatin1Char('/')) ? path.mid(AppPath().size() + 1)
                                                                       : path;
        for (const QString& name : watch)
            entry += (shown(name) ? QStringLiteral(" +") : QStringLiteral(" -")) + name;
        log << entry;
    });
    dialogs->asked = [this](const QString& question) { log << question; };
    runtime().forms().setCreatedHook([this](Form& window) {
        if (auto* pop = dynamic_cast<StatF*>(&window))
            QObject::connect(&pop->Info, &Control::textWritten, [this, pop](const QString& text) {
                status << text;
                statusShown << pop->Visible();
            });
        if (dynamic_cast<MainFRM*>(&window))
            QObject::connect(&window, &Form::captionWritten, [this](const QString& c) { captions << c; });
    });
    form<ThemeSelector>().TPath.setText(theme); // as the program's start leaves it
}

Form* Program::opened(const std::function<Form*()>& touch)
{
    Form* window = nullptr;
    runHandler([&] { window = touch(); });
    if (!window) {
        qWarning("the window's load ended the program (errors %s)", qPrintable(QString::number(untrappedErrors.value(0))));
        return nullptr;
    }
    window->Show();
    if (!QTest::qWaitForWindowExposed(window->widget())) {
        qWarning("%s never reached the screen", qPrintable(window->widget()->objectName()));
        return nullptr;
    }
    return window;
}

MainFRM* Program::main()
{
    if (m_main)
        return m_main;
    auto* main = open<MainFRM>();
    if (!main || !waitForCaption(kDone)) {
        qWarning("the main window never finished loading its home page");
        return nullptr;
    }
    return m_main = main;
}

void Program::choose(const QString& entry)
{
    auto* item = main() ? m_main->findChild<MenuItem*>(entry) : nullptr;
    if (!item)
        qFatal("no menu entry %s", qPrintable(entry));
    item->action()->trigger();
}

bool Program::waitForCaption(const QString& caption, qsizetype from)
{
    return QTest::qWaitFor([&] { return captions.indexOf(caption, from) >= 0; }, 20000);
}

QString themeWithout(const QTemporaryDir& dir, const QString& missing)
{
    const QString shipped = kThemes + QStringLiteral("/Default");
    for (const QString& f : QDir(shipped).entryList(QDir::Files))
        if (f != missing)
            QFile::copy(shipped + QLatin1Char('/') + f, dir.filePath(f));
    return dir.path();
}

QVariant evaluate(WebBrowser& browser, const QString& script)
{
    QVariant result;
    bool done = false;
    browser.view()->page()->runJavaScript(script, [&](const QVariant& v) {
        result = v;
        done = true;
    });
    if (!QTest::qWaitFor([&] { return done; }, 10000))
        qWarning("the page never answered the script");
    return result;
}

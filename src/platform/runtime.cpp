#include "runtime.h"

#include "dialogs.h"
#include "form.h"
#include "sounds.h"
#include "timer.h"
#include "timing.h"

#include <QApplication>
#include <QEventLoop>
#include <QFont>
#include <QMessageBox>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace platform {
namespace {

Runtime* g_current = nullptr;

// The windows ask for "OCR A Extended"; on this desktop the OCR-A family serves it.
void substituteFonts()
{
    QFont::insertSubstitutions(QStringLiteral("OCR A Extended"),
                               {QStringLiteral("OCRA"), QStringLiteral("OCR A"), QStringLiteral("Monospace")});
}

} // namespace

// Forms ---------------------------------------------------------------------------------

Forms::~Forms()
{
    destroyAll();
}

Form* Forms::find(std::type_index type) const
{
    const auto it = m_forms.find(type);
    return it == m_forms.end() ? nullptr : it->second;
}

void Forms::adopt(std::type_index type, Form* form)
{
    // Registered before its load handler runs, so the handler's own touches find it.
    m_forms[type] = form;
    logTiming(QStringLiteral("loading ") + form->objectName());
    if (m_created)
        m_created(*form);
    form->runLoad();
}

void Forms::unload(Form& form)
{
    const bool loaded = std::any_of(m_forms.begin(), m_forms.end(), [&](const auto& entry) { return entry.second == &form; });
    if (!loaded || m_unloading.count(&form))
        return;
    m_unloading.insert(&form);
    int cancel = 0;
    try {
        form.runUnload(cancel);
    } catch (...) {
        m_unloading.erase(&form);
        throw;
    }
    m_unloading.erase(&form);
    if (cancel)
        return;
    for (auto it = m_forms.begin(); it != m_forms.end(); ++it) {
        if (it->second == &form) {
            m_forms.erase(it);
            break;
        }
    }
    form.widget()->hide();
    logTiming(QStringLiteral("unloaded ") + form.objectName());
    for (Timer* timer : form.widget()->findChildren<Timer*>())
        timer->setEnabled(false); // an unloaded window's timers stop at once
    form.runTerminate();
    form.deleteLater(); // its own handler may still be on the stack
}

void Forms::destroyAll()
{
    auto forms = std::move(m_forms);
    m_forms.clear();
    for (auto& [type, form] : forms)
        delete form;
}

// Runtime -------------------------------------------------------------------------------

Runtime::Runtime(QString programDir)
    : m_programDir(programDir.isEmpty() ? QCoreApplication::applicationDirPath() : std::move(programDir)),
      m_random(0x50000), m_dialogs(std::make_unique<Dialogs>()), m_previous(g_current)
{
    g_current = this;
    substituteFonts();
}

Runtime::~Runtime()
{
    m_forms.destroyAll();
    g_current = m_previous;
}

Runtime& Runtime::current()
{
    Q_ASSERT(g_current);
    return *g_current;
}

void Runtime::setDialogs(std::unique_ptr<Dialogs> dialogs)
{
    m_dialogs = std::move(dialogs);
}

WavePlayer& Runtime::sounds()
{
    if (!m_sounds)
        m_sounds = std::make_unique<WavePlayer>();
    return *m_sounds;
}

void Runtime::reportUntrapped(const RuntimeError& error)
{
    m_ended = true;
    if (m_untrappedHook) {
        m_untrappedHook(error);
        return;
    }
    const QString report = untrappedReport(error);
    std::fprintf(stderr, "%s\n", qPrintable(report));
    // The report stands above every window of the program, top-most ones included.
    QMessageBox box(QMessageBox::Critical, title(), report, QMessageBox::Ok);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    box.exec();
    std::fflush(nullptr);
    _exit(EXIT_FAILURE);
}

void Runtime::end()
{
    m_ended = true;
    if (m_endHook) {
        m_endHook();
        throw ProgramEnd{};
    }
    std::fflush(nullptr);
    _exit(EXIT_SUCCESS); // at once: no window's unload handler runs
}

// The statements ------------------------------------------------------------------------

void runHandler(const std::function<void()>& handler) noexcept
{
    Runtime& runtime = Runtime::current();
    if (runtime.ended())
        return;
    try {
        handler();
    } catch (const RuntimeError& error) {
        runtime.reportUntrapped(error);
    } catch (const ProgramEnd&) {
        // ended; the handlers below this one unwind at their next DoEvents
    }
}

void Unload(Form& form)
{
    Runtime::current().forms().unload(form);
}

void DoEvents()
{
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    if (Runtime::current().ended())
        throw ProgramEnd{};
}

void DoEventsFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(std::max(ms, 0), &loop, &QEventLoop::quit);
    loop.exec();
    if (Runtime::current().ended())
        throw ProgramEnd{};
}

void End()
{
    Runtime::current().end();
}

int MsgBox(const QString& prompt, int style, const std::optional<QString>& title)
{
    return Runtime::current().dialogs().messageBox(prompt, style, title.value_or(Runtime::current().title()));
}

QString AppPath()
{
    return Runtime::current().programDir();
}

double Rnd()
{
    return Runtime::current().random().Rnd();
}

void Randomize(double seed)
{
    Runtime::current().random().Randomize(seed);
}

} // namespace platform

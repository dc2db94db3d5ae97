#include "runtime.h"

#include "common_dialog.h"
#include "form.h"
#include "sounds.h"
#include "timer.h"
#include "timing.h"

#include <QApplication>
#include <QEventLoop>
#include <QFont>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

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
    int cancel = 0;
    form.runUnload(cancel);
    if (cancel)
        return;
    for (auto it = m_forms.begin(); it != m_forms.end(); ++it) {
        if (it->second == &form) {
            m_forms.erase(it);
            break;
        }
    }
    form.hide();
    for (Timer* timer : form.findChildren<Timer*>())
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
      m_random(0x50000), m_previous(g_current)
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
    QMessageBox box(QMessageBox::Critical, title(), report, QMessageBox::Ok);
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

int Runtime::messageBox(const QString& prompt, int style, const QString& caption)
{
    if (m_messageBoxHook)
        return m_messageBoxHook(prompt, style, caption);
    QMessageBox box;
    box.setWindowTitle(caption);
    box.setText(prompt);
    // Button sets the program does not use (and style values that name none) get a single OK.
    switch (style & 0x7) {
    case vbOKCancel: box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel); break;
    case vbYesNo: box.setStandardButtons(QMessageBox::Yes | QMessageBox::No); break;
    default: box.setStandardButtons(QMessageBox::Ok); break;
    }
    if (style & vbDefaultButton2)
        box.setDefaultButton(qobject_cast<QPushButton*>(box.buttons().value(1)));
    switch (style & 0x70) {
    case vbCritical: box.setIcon(QMessageBox::Critical); break;
    case vbQuestion: box.setIcon(QMessageBox::Question); break;
    case vbExclamation: box.setIcon(QMessageBox::Warning); break;
    case vbInformation: box.setIcon(QMessageBox::Information); break;
    default: break;
    }
    switch (box.exec()) {
    case QMessageBox::Cancel: return vbCancel;
    case QMessageBox::Yes: return vbYes;
    case QMessageBox::No: return vbNo;
    default: return vbOK;
    }
}

QString Runtime::askFile(const FileDialogRequest& request)
{
    if (m_fileDialogHook)
        return m_fileDialogHook(request);
    QFileDialog dialog(nullptr, request.title);
    dialog.setAcceptMode(request.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(request.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setNameFilters(CommonDialog::nameFilters(request.filter));
    if (!request.initDir.isEmpty())
        dialog.setDirectory(request.initDir);
    if (!request.fileName.isEmpty())
        dialog.selectFile(request.fileName);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

bool Runtime::askLogin(const QString& site, QString& user, QString& password)
{
    if (m_loginHook)
        return m_loginHook(site, user, password);
    QDialog dialog;
    dialog.setWindowTitle(QStringLiteral("Log In"));
    auto* form = new QFormLayout(&dialog);
    auto* userBox = new QLineEdit(&dialog);
    auto* passwordBox = new QLineEdit(&dialog);
    passwordBox->setEchoMode(QLineEdit::Password);
    form->addRow(new QLabel(QStringLiteral("The site %1 asks for a user name and password.").arg(site)));
    form->addRow(QStringLiteral("User name:"), userBox);
    form->addRow(QStringLiteral("Password:"), passwordBox);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    form->addRow(buttons);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    user = userBox->text();
    password = passwordBox->text();
    return true;
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

int MsgBox(const QString& prompt, int style, const QString& title)
{
    return Runtime::current().messageBox(prompt, style, title);
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

#pragma once
// The process's classic runtime: the program directory, the single instances of the windows,
// the file table, the wave player and the random source, and the handler boundary where
// untrapped run-time errors are reported and where End ends the process.
//
// One Runtime is current at a time. The program makes one in main(); a test makes its own,
// with a program directory of its choosing, and may take the untrapped-error report, the End
// and the message boxes through hooks instead of letting them end the test process.

#include "convert.h"
#include "errors.h"
#include "files.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <typeindex>
#include <unordered_map>
#include <unordered_set>

namespace platform {

class Form;
class WavePlayer;

// Window styles of the message box that the program uses.
enum MsgBoxStyle : int {
    vbOKOnly = 0, vbOKCancel = 1, vbYesNo = 4, vbCritical = 16, vbQuestion = 32, vbExclamation = 48,
    vbInformation = 64, vbDefaultButton2 = 256
};
enum MsgBoxResult : int { vbOK = 1, vbCancel = 2, vbYes = 6, vbNo = 7 };

class Dialogs;

// The windows of the process, each created and loaded on first touch.
class Forms {
public:
    Forms() = default;
    ~Forms();
    Forms(const Forms&) = delete;
    Forms& operator=(const Forms&) = delete;

    // The window's one instance; the first touch creates it and runs its load handler, whose
    // errors travel to the statement that touched it.
    template <class F>
    F& get()
    {
        if (Form* existing = find(typeid(F)))
            return static_cast<F&>(*existing);
        auto* form = new F();
        adopt(typeid(F), form);
        // A window that unloads itself in its load handler is gone: "Object was unloaded".
        if (find(typeid(F)) != form)
            raiseError(ErrObjectWasUnloaded);
        return static_cast<F&>(*form);
    }
    template <class F>
    bool isLoaded() const { return m_forms.count(typeid(F)) != 0; }

    // Called with every window as it is made, before its load handler runs (for tests that
    // watch a window from its first moment).
    void setCreatedHook(std::function<void(Form&)> hook) { m_created = std::move(hook); }

    // Runs the unload handler; unless it cancels, the window goes and the next touch makes a
    // new one. Asking again while its unload handler runs, or once it has gone, does nothing.
    void unload(Form& form);
    // Ends every window without running a handler (the end of the program).
    void destroyAll();

private:
    Form* find(std::type_index type) const;
    void adopt(std::type_index type, Form* form);

    std::unordered_map<std::type_index, Form*> m_forms;
    std::unordered_set<const Form*> m_unloading;
    std::function<void(Form&)> m_created;
};

class Runtime {
public:
    // programDir empty: the directory of the executable.
    explicit Runtime(QString programDir = {});
    ~Runtime();
    Runtime(const Runtime&) = delete;
    Runtime& operator=(const Runtime&) = delete;

    static Runtime& current();

    const QString& programDir() const { return m_programDir; }
    // The program name that titles the untrapped-error report.
    QString title() const { return QStringLiteral("Glidepath"); }

    Forms& forms() { return m_forms; }
    FileTable& files() { return m_files; }
    RandomSource& random() { return m_random; }
    WavePlayer& sounds();

    // Every question put to a person goes through here; a test sets its own answerer.
    Dialogs& dialogs() { return *m_dialogs; }
    void setDialogs(std::unique_ptr<Dialogs> dialogs);

    // Test hooks. With a hook set, the report and End go to it; after a report or an End the
    // runtime counts as ended: no further handler runs and the handlers still on the stack
    // unwind at their next message pump.
    void setUntrappedErrorHook(std::function<void(const RuntimeError&)> hook) { m_untrappedHook = std::move(hook); }
    void setEndHook(std::function<void()> hook) { m_endHook = std::move(hook); }
    bool ended() const { return m_ended; }

    void reportUntrapped(const RuntimeError& error);
    [[noreturn]] void end();

private:
    QString m_programDir;
    Forms m_forms;
    FileTable m_files;
    RandomSource m_random;
    std::unique_ptr<WavePlayer> m_sounds;
    std::function<void(const RuntimeError&)> m_untrappedHook;
    std::function<void()> m_endHook;
    std::unique_ptr<Dialogs> m_dialogs;
    bool m_ended = false;
    Runtime* m_previous = nullptr;
};

// The boundary between the platform's events and the system's handlers: an untrapped
// run-time error stops here and is reported.
void runHandler(const std::function<void()>& handler) noexcept;

template <class F>
F& form() { return Runtime::current().forms().get<F>(); }
void Unload(Form& form);

// Let pending messages be processed (the runtime's DoEvents).
void DoEvents();
// Processes messages as they come for the given time, without spinning the processor.
void DoEventsFor(int ms);
// Ends the whole process at once; no unload handler runs.
[[noreturn]] void End();
// A title left out is the program's own; one given empty shows an empty title bar.
int MsgBox(const QString& prompt, int style = vbOKOnly, const std::optional<QString>& title = std::nullopt);
QString AppPath();
double Rnd();
void Randomize(double seed);

} // namespace platform

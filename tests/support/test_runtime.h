#pragma once
// A runtime for one test: a fresh program directory in a temporary folder, hooks that take the
// untrapped-error report and End instead of ending the test process, and dialogs answered by
// the test instead of a person.

#include "platform/dialogs.h"
#include "platform/runtime.h"

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <memory>

// Answers every question the program puts to a person, and records what was asked.
class TestDialogs : public platform::Dialogs {
public:
    int messageBox(const QString& prompt, int style, const QString& title) override;
    QString file(const platform::FileDialogRequest& request) override;
    bool login(const QString& site, QString& user, QString& password) override;
    bool print(QPrinter& printer) override;
    bool pageSetup(QPrinter& printer) override;

    // Told of every question as it is put: "message", "open file", "save file", "log-in",
    // "print", "page set-up".
    std::function<void(const QString&)> asked;

    QStringList messageBoxes; // the prompts shown
    QStringList messageBoxTitles;
    QList<int> messageBoxStyles;
    int messageBoxAnswer = platform::vbOK;

    QList<platform::FileDialogRequest> fileRequests;
    std::function<QString(const platform::FileDialogRequest&)> fileAnswer; // unset: cancel
    std::function<bool(const QString& site, QString& user, QString& password)> loginAnswer; // unset: cancel
    std::function<bool(QPrinter&)> printAnswer;     // unset: cancel
    std::function<bool(QPrinter&)> pageSetupAnswer; // unset: cancel

private:
    void note(const QString& question);
};

class TestRuntime {
public:
    TestRuntime();
    ~TestRuntime();

    platform::Runtime& runtime() { return *m_runtime; }
    QString path(const QString& name) const; // a file in the program directory
    void write(const QString& name, const QByteArray& bytes) const;
    QByteArray read(const QString& name) const;

    QList<int> untrappedErrors; // numbers, in the order reported
    int ends = 0;
    TestDialogs* dialogs = nullptr; // owned by the runtime

private:
    QTemporaryDir m_dir;
    std::unique_ptr<platform::Runtime> m_runtime;
};

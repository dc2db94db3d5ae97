#pragma once
// A runtime for one test: a fresh program directory in a temporary folder, and hooks that
// take the untrapped-error report, End and message boxes instead of ending the test process.

#include "platform/runtime.h"

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

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
    QStringList messageBoxes;   // the prompts shown
    int messageBoxAnswer = platform::vbOK;

private:
    QTemporaryDir m_dir;
    std::unique_ptr<platform::Runtime> m_runtime;
};

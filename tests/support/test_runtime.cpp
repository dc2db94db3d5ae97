#include "test_runtime.h"

#include <QFile>

void TestDialogs::note(const QString& question)
{
    if (asked)
        asked(question);
}

int TestDialogs::messageBox(const QString& prompt, int style, const QString& title)
{
    note(QStringLiteral("message"));
    messageBoxes << prompt;
    messageBoxStyles << style;
    messageBoxTitles << title;
    return messageBoxAnswer;
}

QString TestDialogs::file(const platform::FileDialogRequest& request)
{
    note(request.save ? QStringLiteral("save file") : QStringLiteral("open file"));
    fileRequests << request;
    return fileAnswer ? fileAnswer(request) : QString();
}

bool TestDialogs::login(const QString& site, QString& user, QString& password)
{
    note(QStringLiteral("log-in"));
    return loginAnswer && loginAnswer(site, user, password);
}

bool TestDialogs::print(QPrinter& printer)
{
    note(QStringLiteral("print"));
    return printAnswer && printAnswer(printer);
}

bool TestDialogs::pageSetup(QPrinter& printer)
{
    note(QStringLiteral("page set-up"));
    return pageSetupAnswer && pageSetupAnswer(printer);
}

TestRuntime::TestRuntime() : m_runtime(std::make_unique<platform::Runtime>(m_dir.path()))
{
    m_runtime->setUntrappedErrorHook([this](const platform::RuntimeError& e) { untrappedErrors << e.number(); });
    m_runtime->setEndHook([this] { ++ends; });
    auto answerer = std::make_unique<TestDialogs>();
    dialogs = answerer.get();
    m_runtime->setDialogs(std::move(answerer));
}

TestRuntime::~TestRuntime() = default;

QString TestRuntime::path(const QString& name) const
{
    return m_dir.path() + QLatin1Char('/') + name;
}

void TestRuntime::write(const QString& name, const QByteArray& bytes) const
{
    QFile f(path(name));
    if (f.open(QIODevice::WriteOnly))
        f.write(bytes);
}

QByteArray TestRuntime::read(const QString& name) const
{
    QFile f(path(name));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

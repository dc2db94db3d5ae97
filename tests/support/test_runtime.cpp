#include "test_runtime.h"

#include <QFile>

TestRuntime::TestRuntime() : m_runtime(std::make_unique<platform::Runtime>(m_dir.path()))
{
    m_runtime->setUntrappedErrorHook([this](const platform::RuntimeError& e) { untrappedErrors << e.number(); });
    m_runtime->setEndHook([this] { ++ends; });
    m_runtime->setMessageBoxHook([this](const QString& prompt, int, const QString&) {
        messageBoxes << prompt;
        return messageBoxAnswer;
    });
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

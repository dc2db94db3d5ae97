#include "files.h"

#include "cp1252.h"
#include "errors.h"
#include "runtime.h"
#include "whole_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace platform {

struct FileTable::Entry {
    OpenMode mode;
    std::unique_ptr<FieldReader> input;  // Input: the whole file, decoded
    QString path;                        // Output and Append: written whole on Close
    std::unique_ptr<QByteArray> output;
};

FileTable::FileTable() = default;
FileTable::~FileTable() = default; // open output files are dropped, their targets untouched

void FileTable::open(const QString& path, OpenMode mode, int number)
{
    if (number < 1 || number > 511)
        raiseError(ErrBadFileNameOrNumber);
    if (m_open.count(number))
        raiseError(ErrFileAlreadyOpen);
    const QString file = nativePath(path);
    if (file.isEmpty())
        raiseError(ErrPathFileAccess);
    const QFileInfo info(file);
    if (info.isDir())
        raiseError(ErrPathFileAccess);

    auto entry = std::make_unique<Entry>();
    entry->mode = mode;
    if (mode == OpenMode::Input) {
        finishInterruptedWrite(file);
        QFile f(file);
        if (!info.exists())
            raiseError(ErrFileNotFound);
        if (!f.open(QIODevice::ReadOnly))
            raiseError(ErrPathFileAccess);
        entry->input = std::make_unique<FieldReader>(decodeAnsi(f.readAll()));
    } else {
        if (!info.absoluteDir().exists())
            raiseError(ErrPathNotFound);
        if (!canWriteWholeFile(file))
            raiseError(ErrPathFileAccess);
        entry->path = file;
        entry->output = std::make_unique<QByteArray>();
        if (mode == OpenMode::Append) {
            finishInterruptedWrite(file);
            QFile f(file);
            if (f.open(QIODevice::ReadOnly))
                *entry->output = f.readAll();
        }
    }
    m_open.emplace(number, std::move(entry));
}

void FileTable::close(int number)
{
    const auto it = m_open.find(number);
    if (it == m_open.end())
        return;
    std::unique_ptr<Entry> entry = std::move(it->second);
    m_open.erase(it);
    if (entry->output && !writeWholeFile(entry->path, *entry->output))
        raiseError(ErrDeviceIO);
}

void FileTable::closeAll()
{
    while (!m_open.empty())
        close(m_open.begin()->first);
}

bool FileTable::isOpen(int number) const
{
    return m_open.count(number) != 0;
}

FileTable::Entry& FileTable::entry(int number)
{
    const auto it = m_open.find(number);
    if (it == m_open.end())
        raiseError(ErrBadFileNameOrNumber);
    return *it->second;
}

bool FileTable::eof(int number)
{
    Entry& e = entry(number);
    return e.input ? e.input->atEnd() : true;
}

qint64 FileTable::lof(int number)
{
    Entry& e = entry(number);
    return e.input ? e.input->size() : e.output->size();
}

QString FileTable::inputChars(qint64 count, int number)
{
    Entry& e = entry(number);
    if (!e.input)
        raiseError(ErrBadFileMode);
    return e.input->take(count);
}

QString FileTable::inputField(int number)
{
    Entry& e = entry(number);
    if (!e.input)
        raiseError(ErrBadFileMode);
    return e.input->next();
}

QString FileTable::lineInput(int number)
{
    Entry& e = entry(number);
    if (!e.input)
        raiseError(ErrBadFileMode);
    return e.input->line();
}

void FileTable::printLine(int number, const QString& text)
{
    Entry& e = entry(number);
    if (!e.output)
        raiseError(ErrBadFileMode);
    e.output->append(encodeAnsi(text)).append("\r\n");
}

void Open(const QString& path, OpenMode mode, int number) { Runtime::current().files().open(path, mode, number); }
void Close(int number) { Runtime::current().files().close(number); }
bool Eof(int number) { return Runtime::current().files().eof(number); }
qint64 LOF(int number) { return Runtime::current().files().lof(number); }
QString InputChars(qint64 count, int number) { return Runtime::current().files().inputChars(count, number); }
QString InputField(int number) { return Runtime::current().files().inputField(number); }
QString LineInput(int number) { return Runtime::current().files().lineInput(number); }
void PrintLine(int number, const QString& text) { Runtime::current().files().printLine(number, text); }

} // namespace platform

#pragma once
// Sequential files under file numbers, the classic way: Open path For Input/Output/Append As
// #n, then read or write through the number, then Close. Text is 8-bit Windows-1252.
// Output is kept until Close and then written whole (whole_file.h): a death mid-write never
// leaves a torn file, the old content stays until the new one is complete.

#include "field_reader.h"
#include "paths.h"

#include <QString>

#include <map>
#include <memory>

namespace platform {

enum class OpenMode { Input, Output, Append };

class FileTable {
public:
    FileTable();
    ~FileTable();
    FileTable(const FileTable&) = delete;
    FileTable& operator=(const FileTable&) = delete;

    void open(const QString& path, OpenMode mode, int number);
    void close(int number); // closing a number that is not open does nothing
    void closeAll();
    bool isOpen(int number) const;

    bool eof(int number);
    qint64 lof(int number);
    QString inputChars(qint64 count, int number);
    QString inputField(int number);
    QString lineInput(int number);
    void printLine(int number, const QString& text); // text followed by CR LF

private:
    struct Entry;
    Entry& entry(int number);
    std::map<int, std::unique_ptr<Entry>> m_open;
};

// The statements, on the current runtime's file table.
void Open(const QString& path, OpenMode mode, int number);
void Close(int number);
bool Eof(int number);
qint64 LOF(int number);
QString InputChars(qint64 count, int number);
QString InputField(int number);
QString LineInput(int number);
void PrintLine(int number, const QString& text);

} // namespace platform

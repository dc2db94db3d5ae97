#include "errors.h"

#include <map>

namespace platform {

QString errorDescription(int number)
{
    static const std::map<int, const char*> descriptions = {
        {3, "Return without GoSub"},
        {5, "Invalid procedure call or argument"},
        {6, "Overflow"},
        {7, "Out of memory"},
        {9, "Subscript out of range"},
        {11, "Division by zero"},
        {13, "Type mismatch"},
        {52, "Bad file name or number"},
        {53, "File not found"},
        {54, "Bad file mode"},
        {55, "File already open"},
        {57, "Device I/O error"},
        {58, "File already exists"},
        {61, "Disk full"},
        {62, "Input past end of file"},
        {67, "Too many files"},
        {68, "Device unavailable"},
        {70, "Permission denied"},
        {71, "Disk not ready"},
        {75, "Path/File access error"},
        {76, "Path not found"},
        {91, "Object variable or With block variable not set"},
        {340, "Control array element doesn't exist"},
        {360, "Object already loaded"},
        {364, "Object was unloaded"},
        {380, "Invalid property value"},
        {424, "Object required"},
        {438, "Object doesn't support this property or method"},
        {481, "Invalid picture"},
    };
    const auto it = descriptions.find(number);
    return QString::fromLatin1(it != descriptions.end() ? it->second
                                                        : "Application-defined or object-defined error");
}

RuntimeError::RuntimeError(int number) : RuntimeError(number, errorDescription(number)) {}

RuntimeError::RuntimeError(int number, QString description)
    : m_number(number), m_description(std::move(description)),
      m_what(QStringLiteral("Run-time error '%1': %2").arg(number).arg(m_description).toUtf8())
{
}

QString untrappedReport(const RuntimeError& error)
{
    return QStringLiteral("Run-time error '%1':\n\n%2").arg(error.number()).arg(error.description());
}

void raiseError(int number)
{
    throw RuntimeError(number);
}

} // namespace platform

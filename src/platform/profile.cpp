#include "profile.h"

#include "cp1252.h"
#include "paths.h"
#include "whole_file.h"

#include <QFile>

#include <vector>

namespace platform {
namespace {

struct Line {
    QStringView text;   // without its line end
    QStringView ending; // "\r\n", "\n", "\r" or nothing on the last line
};

std::vector<Line> splitLines(const QString& text)
{
    std::vector<Line> lines;
    const QStringView all(text);
    qsizetype start = 0;
    while (start < all.size()) {
        qsizetype end = start;
        while (end < all.size() && all[end] != QLatin1Char('\n') && all[end] != QLatin1Char('\r'))
            ++end;
        qsizetype next = end;
        if (next < all.size() && all[next] == QLatin1Char('\r'))
            ++next;
        if (next < all.size() && all[next] == QLatin1Char('\n'))
            ++next;
        lines.push_back({all.mid(start, end - start), all.mid(end, next - end)});
        start = next;
    }
    return lines;
}

// The section named by a header line, or nothing for any other line.
std::optional<QStringView> sectionName(QStringView line)
{
    const QStringView t = line.trimmed();
    if (!t.startsWith(QLatin1Char('[')))
        return std::nullopt;
    const qsizetype close = t.indexOf(QLatin1Char(']'));
    return (close < 0 ? t.mid(1) : t.mid(1, close - 1)).trimmed();
}

// The key of a key=value line, or nothing.
std::optional<QStringView> keyName(QStringView line)
{
    const qsizetype eq = line.indexOf(QLatin1Char('='));
    if (eq < 0)
        return std::nullopt;
    return line.left(eq).trimmed();
}

bool sameName(QStringView a, const QString& b)
{
    return a.compare(QStringView(b).trimmed(), Qt::CaseInsensitive) == 0;
}

QString unquoted(QStringView value)
{
    if (value.size() >= 2 && (value.front() == QLatin1Char('"') || value.front() == QLatin1Char('\'')) &&
        value.back() == value.front())
        value = value.mid(1, value.size() - 2);
    return value.toString();
}

// Index range [first, end) of the lines after the header of the section, or first = -1.
struct SectionRange {
    qsizetype header = -1;
    qsizetype end = -1;
};

SectionRange findSection(const std::vector<Line>& lines, const QString& section)
{
    SectionRange range;
    for (qsizetype i = 0; i < qsizetype(lines.size()); ++i) {
        const auto name = sectionName(lines[i].text);
        if (!name)
            continue;
        if (range.header >= 0) {
            range.end = i;
            return range;
        }
        if (sameName(*name, section))
            range.header = i;
    }
    if (range.header >= 0)
        range.end = qsizetype(lines.size());
    return range;
}

std::optional<QString> readFile(const QString& fileName)
{
    finishInterruptedWrite(nativePath(fileName));
    QFile f(nativePath(fileName));
    if (!f.open(QIODevice::ReadOnly))
        return std::nullopt;
    return decodeAnsi(f.readAll());
}

} // namespace

std::optional<QString> profileValue(const QString& text, const QString& section, const QString& key)
{
    const std::vector<Line> lines = splitLines(text);
    const SectionRange range = findSection(lines, section);
    for (qsizetype i = range.header + 1; range.header >= 0 && i < range.end; ++i) {
        const auto name = keyName(lines[i].text);
        if (name && sameName(*name, key)) {
            const QStringView line = lines[i].text;
            return unquoted(line.mid(line.indexOf(QLatin1Char('=')) + 1).trimmed());
        }
    }
    return std::nullopt;
}

QString profileWithValue(const QString& text, const QString& section, const QString& key,
                         const QString& value)
{
    const std::vector<Line> lines = splitLines(text);
    const QString entry = key.trimmed() + QLatin1Char('=') + value;
    const QString crlf = QStringLiteral("\r\n");
    const SectionRange range = findSection(lines, section);

    QString result;
    result.reserve(text.size() + entry.size() + section.size() + 8);
    auto append = [&](const Line& line) { result += line.text; result += line.ending; };

    if (range.header < 0) {
        result = text;
        if (!result.isEmpty() && !result.endsWith(QLatin1Char('\n')) && !result.endsWith(QLatin1Char('\r')))
            result += crlf;
        return result + QLatin1Char('[') + section.trimmed() + QLatin1Char(']') + crlf + entry + crlf;
    }

    qsizetype replace = -1;
    qsizetype lastContent = range.header;
    for (qsizetype i = range.header + 1; i < range.end; ++i) {
        if (!lines[i].text.trimmed().isEmpty())
            lastContent = i;
        const auto name = keyName(lines[i].text);
        if (replace < 0 && name && sameName(*name, key))
            replace = i;
    }
    for (qsizetype i = 0; i < qsizetype(lines.size()); ++i) {
        if (i == replace) {
            result += entry;
            result += lines[i].ending.isEmpty() ? QStringView(crlf) : lines[i].ending;
            continue;
        }
        append(lines[i]);
        if (replace < 0 && i == lastContent) {
            if (lines[i].ending.isEmpty())
                result += crlf;
            result += entry + crlf;
        }
    }
    return result;
}

quint32 GetPrivateProfileStringA(const QString& section, const QString& key,
                                 const QString& defaultValue, QString& buffer, quint32 size,
                                 const QString& fileName)
{
    std::optional<QString> value;
    if (const auto text = readFile(fileName))
        value = profileValue(*text, section, key);
    const QString& found = value ? *value : defaultValue;
    if (size == 0)
        return 0;
    const quint32 count = quint32(std::min<qsizetype>(found.size(), size - 1));
    buffer = found.left(count) + QString(size - count, QChar(0));
    return count;
}

bool WritePrivateProfileStringA(const QString& section, const QString& key, const QString& value,
                                const QString& fileName)
{
    const QString path = nativePath(fileName);
    QString text;
    if (QFile::exists(path)) {
        const auto existing = readFile(path);
        if (!existing)
            return false;
        text = *existing;
    }
    return writeWholeFile(path, encodeAnsi(profileWithValue(text, section, key, value)));
}

} // namespace platform

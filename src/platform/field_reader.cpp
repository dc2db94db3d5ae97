#include "field_reader.h"

#include "errors.h"

namespace platform {
namespace {

bool isLineEnd(QChar c)
{
    return c == QLatin1Char('\r') || c == QLatin1Char('\n');
}

} // namespace

QString FieldReader::next()
{
    if (atEnd())
        raiseError(ErrInputPastEndOfFile);

    while (m_pos < m_text.size() && (m_text[m_pos] == QLatin1Char(' ') || m_text[m_pos] == QLatin1Char('\t')))
        ++m_pos;

    QString field;
    if (m_pos < m_text.size() && m_text[m_pos] == QLatin1Char('"')) {
        const qsizetype close = m_text.indexOf(QLatin1Char('"'), m_pos + 1);
        const qsizetype end = close < 0 ? m_text.size() : close;
        field = m_text.mid(m_pos + 1, end - m_pos - 1);
        m_pos = close < 0 ? end : close + 1;
        while (m_pos < m_text.size() && m_text[m_pos] != QLatin1Char(',') && !isLineEnd(m_text[m_pos]))
            ++m_pos;
    } else {
        const qsizetype start = m_pos;
        while (m_pos < m_text.size() && m_text[m_pos] != QLatin1Char(',') && !isLineEnd(m_text[m_pos]))
            ++m_pos;
        field = m_text.mid(start, m_pos - start);
    }
    skipDelimiter();
    return field;
}

void FieldReader::skipDelimiter()
{
    if (m_pos >= m_text.size())
        return;
    if (m_text[m_pos] == QLatin1Char(',')) {
        ++m_pos;
    } else if (m_text[m_pos] == QLatin1Char('\r')) {
        ++m_pos;
        if (m_pos < m_text.size() && m_text[m_pos] == QLatin1Char('\n'))
            ++m_pos;
    } else if (m_text[m_pos] == QLatin1Char('\n')) {
        ++m_pos;
    }
}

QString FieldReader::take(qsizetype count)
{
    if (count < 0)
        raiseError(ErrInvalidProcedureCall);
    if (count > m_text.size() - m_pos)
        raiseError(ErrInputPastEndOfFile);
    const QString chunk = m_text.mid(m_pos, count);
    m_pos += count;
    return chunk;
}

QString FieldReader::line()
{
    if (atEnd())
        raiseError(ErrInputPastEndOfFile);
    qsizetype end = m_pos;
    while (end < m_text.size() && m_text[end] != QLatin1Char('\r') && m_text[end] != QLatin1Char('\n'))
        ++end;
    const QString text = m_text.mid(m_pos, end - m_pos);
    m_pos = end;
    if (m_pos < m_text.size() && m_text[m_pos] == QLatin1Char('\r'))
        ++m_pos;
    if (m_pos < m_text.size() && m_text[m_pos] == QLatin1Char('\n'))
        ++m_pos;
    return text;
}

} // namespace platform

#include "crlf_text.h"

#include <algorithm>

namespace platform {
namespace {

// A line break in a document's raw text.
bool isBreak(char16_t c)
{
    return c == QChar::ParagraphSeparator || c == QChar::LineSeparator || c == u'\n';
}

qsizetype breaksIn(QStringView text)
{
    const char16_t* p = text.utf16();
    qsizetype breaks = 0;
    for (qsizetype i = 0; i < text.size(); ++i)
        breaks += isBreak(p[i]);
    return breaks;
}

} // namespace

QString CrLfText::withCrLf(QStringView raw)
{
    const qsizetype breaks = breaksIn(raw);
    if (breaks == 0)
        return raw.toString();
    QString text(raw.size() + breaks, Qt::Uninitialized);
    QChar* out = text.data();
    for (const QChar c : raw) {
        if (isBreak(c.unicode())) {
            *out++ = QLatin1Char('\r');
            *out++ = QLatin1Char('\n');
        } else {
            *out++ = c;
        }
    }
    return text;
}

bool CrLfText::start(QString raw, int characterCount)
{
    m_raw = std::move(raw);
    if (m_raw.size() + 1 == characterCount)
        m_raw += QChar(QChar::ParagraphSeparator);
    m_following = m_raw.size() == characterCount;
    if (m_following)
        m_crlf = withCrLf(QStringView(m_raw).chopped(1));
    return m_following;
}

void CrLfText::follow(int position, int removed, int added, int characterCount,
                      const std::function<QString(int from, int to)>& read)
{
    if (!m_following)
        return;
    m_following = false; // until the change is followed through
    const int count = characterCount;
    const qsizetype last = m_raw.size() - 1; // the final paragraph separator
    if (position < 0 || removed < 0 || added < 0 || position + removed > m_raw.size() || position + added > count)
        return;
    // The added characters as the document holds them; its final separator is no character a
    // cursor can select.
    QString inserted = read(position, std::min(position + added, count - 1));
    const bool insertsFinal = position + added == count;
    if (insertsFinal)
        inserted += QChar(QChar::ParagraphSeparator);
    if (inserted.size() != added)
        return;
    const bool removesFinal = position + removed > last;
    if (removesFinal != insertsFinal)
        return;

    // The same change in the CR LF text, which has no final separator.
    const QStringView raw(m_raw);
    const qsizetype from = position + breaksIn(raw.left(position));
    const qsizetype gone = removed + breaksIn(raw.mid(position, removed)) - (removesFinal ? 2 : 0);
    if (from + gone > m_crlf.size())
        return;
    m_crlf.replace(from, gone, withCrLf(insertsFinal ? QStringView(inserted).chopped(1) : QStringView(inserted)));
    m_raw.replace(position, removed, inserted);
    // Anything the report did not describe exactly is read whole at the next reading.
    m_following = m_raw.size() == count;
}

} // namespace platform

#pragma once
// The runtime's delimited input ("Input #n, field"): a field ends at a comma or a line end;
// blanks before a field are skipped; a field that begins with a double quote runs to the
// closing quote and loses its quotes (what follows it up to the next delimiter is dropped).
// Pure text in, fields out: the sequential file layer and the fuzz target both use it.

#include <QString>

namespace platform {

class FieldReader {
public:
    explicit FieldReader(QString text) : m_text(std::move(text)) {}

    bool atEnd() const { return m_pos >= m_text.size(); }
    // The next field; raises "Input past end of file" (62) when there is none.
    QString next();
    // Up to count characters as they stand (the runtime's Input$); 62 past the end.
    QString take(qsizetype count);
    // The rest of the line, without its break (CR LF, LF or CR): the runtime's Line Input;
    // 62 past the end.
    QString line();
    qsizetype size() const { return m_text.size(); }

private:
    void skipDelimiter();

    QString m_text;
    qsizetype m_pos = 0;
};

} // namespace platform

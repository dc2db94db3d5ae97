#pragma once
// The text of a multi-line box as the classic box gives it, every line break a CR LF, kept up
// to date from the changes its document reports, so that reading a long text costs no more
// than its copy (the note pad reads its whole text on every keystroke).
//
// It follows the document's raw text: line breaks as paragraph or line separators, and one
// final paragraph separator that is no character of the text. A report it cannot follow
// exactly stops it; its owner then starts it again from the whole text. It knows no widget.

#include <QString>
#include <QStringView>

#include <functional>

namespace platform {

class CrLfText {
public:
    // Raw text with a CR LF for each line break.
    static QString withCrLf(QStringView raw);

    // Starts from the document's raw text, with or without its final separator, and its
    // character count (the final separator included); false where the two disagree.
    bool start(QString raw, int characterCount);
    bool following() const { return m_following; }
    // The text with CR LF line breaks, as of the last change followed.
    const QString& text() const { return m_crlf; }

    // A change as the document reports it: at position, removed characters went and added ones
    // came; characterCount is the document's count after it, and read(from, to) gives the
    // document's characters from one position to the other, as they are now.
    void follow(int position, int removed, int added, int characterCount,
                const std::function<QString(int from, int to)>& read);

private:
    QString m_raw;  // the document's raw text, final separator included
    QString m_crlf; // the same with CR LF line breaks, without the final separator
    bool m_following = false;
};

} // namespace platform

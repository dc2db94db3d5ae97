#include "rich_text_box.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace platform {

namespace {

// Each typed key lays out its whole line again, about half a second for a line of a megabyte
// (the HTML editor's Open joins a file's lines into one). A longer line is shown in pieces of
// this length, each laid out on its own; the breaks between them are not part of the text.
constexpr int kLongestShownLine = 4096;

// Marks a line break that only splits a long line for the screen. The mark is on the break's
// own character, so editing, undo and redo carry it with the break.
constexpr int kPieceBreak = QTextFormat::UserProperty + 1;

bool isPieceBreak(const QTextBlock& next) { return next.charFormat().boolProperty(kPieceBreak); }

// The text as QTextDocument::toPlainText gives it (one character for each break, in place),
// without the piece breaks that fall in [from, from + text.size()).
QString withoutPieceBreaks(const QTextDocument& document, QString text, int from)
{
    QString kept;
    int copied = 0;
    for (QTextBlock block = document.findBlock(from).next(); block.isValid(); block = block.next()) {
        const int at = block.position() - 1 - from; // the break before this block
        if (at >= text.size())
            break;
        if (at >= 0 && isPieceBreak(block)) {
            kept += QStringView(text).mid(copied, at - copied);
            copied = at + 1;
        }
    }
    if (copied == 0)
        return text;
    kept += QStringView(text).mid(copied);
    return kept;
}

QString plainLineBreaks(QString text)
{
    // As QTextDocument::toPlainText writes them.
    for (QChar& c : text) {
        if (c == QChar::ParagraphSeparator || c == QChar::LineSeparator)
            c = QLatin1Char('\n');
        else if (c == QChar::Nbsp)
            c = QLatin1Char(' ');
    }
    return text;
}

class Area : public QPlainTextEdit {
public:
    Area()
    {
        // Text typed right after a piece break would take the break's mark, and an Enter
        // typed then would become a piece break itself.
        connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] {
            QTextCharFormat format = currentCharFormat();
            if (format.hasProperty(kPieceBreak)) {
                format.clearProperty(kPieceBreak);
                setCurrentCharFormat(format);
            }
        });
    }

protected:
    // A piece break is not text: Backspace just after one, or Delete just before one, takes
    // the character beyond it, as it would in the unbroken line.
    void keyPressEvent(QKeyEvent* event) override
    {
        QTextCursor cursor = textCursor();
        if (!cursor.hasSelection() && event->modifiers() == Qt::NoModifier) {
            const bool back = event->key() == Qt::Key_Backspace && cursor.atBlockStart() && isPieceBreak(cursor.block());
            const bool forth = event->key() == Qt::Key_Delete && cursor.atBlockEnd() && isPieceBreak(cursor.block().next());
            if (back || forth) {
                cursor.movePosition(back ? QTextCursor::PreviousCharacter : QTextCursor::NextCharacter);
                setTextCursor(cursor);
            }
        }
        QPlainTextEdit::keyPressEvent(event);
    }

    // What is copied or dragged is the text, without the pieces' breaks.
    QMimeData* createMimeDataFromSelection() const override
    {
        const QTextCursor selection = textCursor();
        auto* data = new QMimeData;
        data->setText(plainLineBreaks(
            withoutPieceBreaks(*document(), selection.selectedText(), selection.selectionStart())));
        return data;
    }
};

// What the document makes a block break of when the text is set: CR LF counts once.
bool endsLine(QChar c)
{
    return c == QLatin1Char('\n') || c == QLatin1Char('\r') || c == QChar::ParagraphSeparator
        || c.unicode() == 0xFDD0 || c.unicode() == 0xFDD1;
}

// The text with a line break wherever a line runs past kLongestShownLine, and the numbers of
// the blocks those breaks begin; none when no line is that long.
QString inPieces(const QString& text, QList<int>& pieceBlocks)
{
    QString shown;
    const int size = int(text.size());
    int block = 0;
    for (int lineStart = 0, i = 0; i <= size; ++i) {
        if (i < size && !endsLine(text.at(i)))
            continue;
        if (i - lineStart > kLongestShownLine) {
            if (pieceBlocks.isEmpty())
                shown = text.left(lineStart);
            for (int at = lineStart; at < i; at += kLongestShownLine) {
                if (at > lineStart) {
                    pieceBlocks << ++block;
                    shown += QLatin1Char('\n');
                }
                shown += QStringView(text).mid(at, std::min(kLongestShownLine, i - at));
            }
        } else if (!pieceBlocks.isEmpty()) {
            shown += QStringView(text).mid(lineStart, i - lineStart);
        }
        if (i == size)
            break;
        int lineEnd = i;
        if (text.at(i) == QLatin1Char('\r') && i + 1 < size && text.at(i + 1) == QLatin1Char('\n'))
            ++lineEnd;
        if (!pieceBlocks.isEmpty())
            shown += QStringView(text).mid(i, lineEnd - i + 1);
        ++block;
        lineStart = lineEnd + 1;
        i = lineEnd;
    }
    return pieceBlocks.isEmpty() ? text : shown;
}

} // namespace

RichTextBox::RichTextBox(Container& parent, const char* name, TwipsRect rect)
    : Control(parent, name, new Area, rect)
{
    QPlainTextEdit* e = edit();
    e->setLineWrapMode(QPlainTextEdit::NoWrap);
    e->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    e->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    QObject::connect(e, &QPlainTextEdit::textChanged, this, [this] { raiseChange(); });
}

QPlainTextEdit* RichTextBox::edit() const { return static_cast<QPlainTextEdit*>(widget()); }

QString RichTextBox::shown() const
{
    QString text = edit()->toPlainText();
    if (m_inPieces)
        text = withoutPieceBreaks(*edit()->document(), std::move(text), 0);
    text.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    return text;
}

QString RichTextBox::Text() const
{
    return m_text.read(shown());
}

void RichTextBox::setText(const QString& text)
{
    QList<int> pieceBlocks;
    const QString pieces = inPieces(text, pieceBlocks);
    {
        const QSignalBlocker quiet(edit()); // one Change, when the text is all there
        edit()->setPlainText(pieces);
        QTextDocument* document = edit()->document();
        document->setUndoRedoEnabled(false); // marking the pieces is not an edit to undo
        QTextCharFormat mark;
        mark.setProperty(kPieceBreak, true);
        QTextCursor cursor(document);
        cursor.beginEditBlock(); // laid out once, at the end
        for (int number : pieceBlocks) {
            const int at = document->findBlockByNumber(number).position() - 1; // the break before it
            cursor.setPosition(at);
            cursor.setPosition(at + 1, QTextCursor::KeepAnchor);
            cursor.mergeCharFormat(mark);
        }
        cursor.endEditBlock();
        document->setUndoRedoEnabled(true);
        m_inPieces = !pieceBlocks.isEmpty();
    }
    m_text.wrote(text, shown());
    raiseChange();
}

} // namespace platform

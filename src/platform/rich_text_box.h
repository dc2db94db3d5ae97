#pragma once
// The rich text box as the windows use it: a multi-line plain-text editing area with both
// scroll bars, fast with documents of megabytes (lines are not wrapped, so only what is in
// view is ever laid out, and a line of megabytes is shown in pieces laid out one by one). Text written by the program comes back exactly as written; what
// the user types comes back with CR LF line breaks.

#include "controls.h"

class QPlainTextEdit;

namespace platform {

class RichTextBox : public Control {
public:
    RichTextBox(Container& parent, const char* name, TwipsRect rect);
    QString Text() const;
    void setText(const QString& text);

private:
    QPlainTextEdit* edit() const;
    QString shown() const;
    WrittenText m_text;
    bool m_inPieces = false; // a line too long to lay out at each key is shown in pieces
};

} // namespace platform

#include "rich_text_box.h"

#include <QPlainTextEdit>

namespace platform {

RichTextBox::RichTextBox(Container& parent, const char* name, TwipsRect rect)
    : Control(parent, name, new QPlainTextEdit, rect)
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
    text.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    return text;
}

QString RichTextBox::Text() const
{
    return m_text.read(shown());
}

void RichTextBox::setText(const QString& text)
{
    edit()->setPlainText(text);
    m_text.wrote(text, shown());
}

} // namespace platform

#include "find_bar.h"

#include <QCheckBox>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWebEngineFindTextResult>
#include <QWebEngineView>

namespace platform {

FindBar::FindBar(QWebEngineView* view) : QWidget(view), m_view(view)
{
    setObjectName(QStringLiteral("FindBar"));
    setAutoFillBackground(true);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    m_text = new QLineEdit(this);
    m_text->setObjectName(QStringLiteral("FindText"));
    m_text->setPlaceholderText(QStringLiteral("Find on this page"));
    auto* previous = new QPushButton(QStringLiteral("Previous"), this);
    auto* next = new QPushButton(QStringLiteral("Next"), this);
    m_matchCase = new QCheckBox(QStringLiteral("Match case"), this);
    m_result = new QLabel(this);
    m_result->setObjectName(QStringLiteral("FindResult"));
    auto* done = new QPushButton(QStringLiteral("Close"), this);
    for (QWidget* w : std::initializer_list<QWidget*>{m_text, previous, next, m_matchCase, m_result, done})
        layout->addWidget(w);
    layout->setStretch(0, 1);
    connect(m_text, &QLineEdit::textChanged, this, [this] { find(false); });
    connect(m_text, &QLineEdit::returnPressed, this, [this] { find(QGuiApplication::keyboardModifiers() & Qt::ShiftModifier); });
    connect(next, &QPushButton::clicked, this, [this] { find(false); });
    connect(previous, &QPushButton::clicked, this, [this] { find(true); });
    connect(m_matchCase, &QCheckBox::toggled, this, [this] { find(false); });
    connect(done, &QPushButton::clicked, this, &FindBar::close);
    connect(m_view->page(), &QWebEnginePage::findTextFinished, this, [this](const QWebEngineFindTextResult& r) {
        if (m_text->text().isEmpty())
            m_result->clear();
        else if (r.numberOfMatches() == 0)
            m_result->setText(QStringLiteral("Not found"));
        else
            m_result->setText(QStringLiteral("%1 of %2").arg(r.activeMatch()).arg(r.numberOfMatches()));
    });
    m_view->installEventFilter(this);
    hide();
}

void FindBar::open()
{
    place();
    show();
    raise();
    m_text->setFocus();
    m_text->selectAll();
}

void FindBar::close()
{
    hide();
    m_view->page()->findText(QString()); // the highlights go with the bar
    m_view->setFocus();
}

QString FindBar::resultText() const
{
    return m_result->text();
}

void FindBar::find(bool backward)
{
    QWebEnginePage::FindFlags flags;
    if (backward)
        flags |= QWebEnginePage::FindBackward;
    if (m_matchCase->isChecked())
        flags |= QWebEnginePage::FindCaseSensitively;
    m_view->page()->findText(m_text->text(), flags);
}

void FindBar::place()
{
    const int height = sizeHint().height();
    setGeometry(0, 0, m_view->width(), height);
}

void FindBar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

bool FindBar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_view && event->type() == QEvent::Resize && isVisible())
        place();
    return false;
}

} // namespace platform

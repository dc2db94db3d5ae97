#include "page_properties.h"

#include "screen_place.h"

#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QPointer>
#include <QPushButton>
#include <QUrl>
#include <QWebEnginePage>

namespace platform {
namespace {

// What the page itself knows: its navigation entry says how large it arrived and its document
// when the server said it was last changed.
const char kFacts[] = R"(
(function() {
  var nav = (performance.getEntriesByType && performance.getEntriesByType('navigation')[0]) || {};
  return {
    type: document.contentType || '',
    size: nav.decodedBodySize || (document.documentElement ? document.documentElement.outerHTML.length : 0),
    modified: document.lastModified || ''
  };
})()
)";

} // namespace

PagePropertiesWindow::PagePropertiesWindow(QWebEnginePage* page)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("PageProperties"));
    setWindowTitle(QStringLiteral("Page Properties"));
    m_form = new QFormLayout(this);
    const QUrl url = page->url();
    m_form->addRow(QStringLiteral("Title:"), new QLabel(page->title().isEmpty() ? QStringLiteral("(none)") : page->title()));
    m_form->addRow(QStringLiteral("Address:"), new QLabel(url.toString()));
    m_form->addRow(QStringLiteral("Protocol:"), new QLabel(url.scheme().toUpper()));
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    m_form->addRow(close);
    for (int row = 0; row < m_form->rowCount(); ++row)
        if (auto* label = qobject_cast<QLabel*>(m_form->itemAt(row, QFormLayout::FieldRole) ? m_form->itemAt(row, QFormLayout::FieldRole)->widget() : nullptr))
            label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    page->runJavaScript(QString::fromLatin1(kFacts), [self = QPointer<PagePropertiesWindow>(this)](const QVariant& result) {
        if (self)
            self->fill(result.toMap());
    });
    placeWholeOnScreen(*this, true);
}

void PagePropertiesWindow::fill(const QVariantMap& facts)
{
    const int at = m_form->rowCount() - 1; // above the Close button
    const qint64 bytes = facts.value(QStringLiteral("size")).toLongLong();
    m_form->insertRow(at, QStringLiteral("Type:"), new QLabel(facts.value(QStringLiteral("type")).toString()));
    m_form->insertRow(at + 1, QStringLiteral("Size:"), new QLabel(QStringLiteral("%1 bytes").arg(bytes)));
    // The document's own date: the server's Last-Modified, or the time it arrived.
    m_form->insertRow(at + 2, QStringLiteral("Modified:"), new QLabel(facts.value(QStringLiteral("modified")).toString()));
}

QString PagePropertiesWindow::value(const QString& heading) const
{
    for (int row = 0; row < m_form->rowCount(); ++row) {
        auto* label = m_form->itemAt(row, QFormLayout::LabelRole);
        auto* field = m_form->itemAt(row, QFormLayout::FieldRole);
        if (label && field && qobject_cast<QLabel*>(label->widget()) &&
            static_cast<QLabel*>(label->widget())->text() == heading)
            if (auto* text = qobject_cast<QLabel*>(field->widget()))
                return text->text();
    }
    return {};
}

} // namespace platform

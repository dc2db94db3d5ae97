#include "page_properties.h"

#include "screen_place.h"

#include <QDateTime>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QPushButton>
#include <QTimeZone>
#include <QUrl>
#include <QWebEnginePage>

namespace platform {
namespace {

// How long the server may take to answer for its dates before the window stops waiting.
constexpr int kServerTimeoutMs = 10000;

// What the page itself knows: its type, and how large it arrived (its navigation entry; the
// markup's length where the entry has no size).
const char kFacts[] = R"(
(function() {
  var nav = (performance.getEntriesByType && performance.getEntriesByType('navigation')[0]) || {};
  return {
    type: document.contentType || '',
    size: nav.decodedBodySize || (document.documentElement ? document.documentElement.outerHTML.length : 0)
  };
})()
)";

// A date as HTTP gives it ("Sun, 06 Nov 1994 08:49:37 GMT"); invalid when it is none.
QDateTime httpDate(const QByteArray& value)
{
    const QString text = QString::fromLatin1(value).trimmed();
    QDateTime when = QDateTime::fromString(text, Qt::RFC2822Date);
    if (!when.isValid() && text.endsWith(QLatin1String(" GMT"))) {
        when = QLocale::c().toDateTime(text.chopped(4), QStringLiteral("ddd, dd MMM yyyy hh:mm:ss"));
        when.setTimeZone(QTimeZone::utc());
    }
    return when;
}

QString bytesText(qint64 bytes)
{
    return QStringLiteral("%1 bytes").arg(QLocale().toString(bytes));
}

} // namespace

PagePropertiesWindow::PagePropertiesWindow(QWebEnginePage* page)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("PageProperties"));
    setWindowTitle(QStringLiteral("Page Properties"));
    m_form = new QFormLayout(this);
    const QUrl url = page->url();
    m_type = new QLabel(this);
    m_size = new QLabel(this);
    m_form->addRow(QStringLiteral("Title:"), new QLabel(page->title().isEmpty() ? QStringLiteral("(none)") : page->title()));
    m_form->addRow(QStringLiteral("Address:"), new QLabel(url.toString()));
    m_form->addRow(QStringLiteral("Protocol:"), new QLabel(url.scheme().toUpper()));
    m_form->addRow(QStringLiteral("Type:"), m_type);
    m_form->addRow(QStringLiteral("Size:"), m_size);
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    m_form->addRow(close);
    for (QLabel* label : findChildren<QLabel*>())
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);

    ++m_pending;
    page->runJavaScript(QString::fromLatin1(kFacts), [self = QPointer<PagePropertiesWindow>(this)](const QVariant& result) {
        if (self)
            self->fillFromPage(result.toMap());
    });
    if (url.isLocalFile()) {
        fillFromFile(url.toLocalFile());
    } else if (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https")) {
        // The engine keeps no response headers for its pages: the server is asked once more,
        // for the headers alone.
        auto* network = new QNetworkAccessManager(this);
        QNetworkRequest request(url);
        request.setTransferTimeout(kServerTimeoutMs);
        ++m_pending;
        QNetworkReply* reply = network->head(request);
        connect(reply, &QNetworkReply::finished, this, [this, reply] {
            fillFromServer(reply);
            reply->deleteLater();
        });
    }
    placeWholeOnScreen(*this, true);
}

void PagePropertiesWindow::fillFromPage(const QVariantMap& facts)
{
    --m_pending;
    m_type->setText(facts.value(QStringLiteral("type")).toString());
    if (!m_sizeKnown)
        m_size->setText(bytesText(facts.value(QStringLiteral("size")).toLongLong()));
}

void PagePropertiesWindow::fillFromServer(QNetworkReply* reply)
{
    --m_pending;
    if (reply->error() != QNetworkReply::NoError && !reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid())
        return; // no answer at all: no dates to show
    addDate(QStringLiteral("Modified:"), reply->header(QNetworkRequest::LastModifiedHeader).toDateTime());
    for (const auto& [heading, header] : {std::pair{"Served:", "Date"}, std::pair{"Expires:", "Expires"}}) {
        if (reply->hasRawHeader(header))
            addDate(QString::fromLatin1(heading), httpDate(reply->rawHeader(header)));
    }
}

void PagePropertiesWindow::fillFromFile(const QString& path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return;
    if (file.isFile()) {
        m_sizeKnown = true;
        m_size->setText(bytesText(file.size()));
    }
    addDate(QStringLiteral("Created:"), file.birthTime());
    addDate(QStringLiteral("Modified:"), file.lastModified());
}

void PagePropertiesWindow::addDate(const QString& heading, const QDateTime& when)
{
    if (when.isValid())
        addRow(heading, QLocale().toString(when.toLocalTime(), QLocale::LongFormat));
}

void PagePropertiesWindow::addRow(const QString& heading, const QString& text)
{
    auto* value = new QLabel(text, this);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_form->insertRow(m_form->rowCount() - 1, heading, value); // above the Close button
    adjustSize();
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

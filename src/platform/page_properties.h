#pragma once
// The page properties window of a browser pane: the page's title, address, protocol, type and
// size, and the dates that its source gave: the server's Last-Modified, Date and Expires for a
// page from the web, the file's dates for a page on disk. A date the source did not give is not
// shown. Modeless: it waits for nobody.

#include <QWidget>

class QDateTime;
class QFormLayout;
class QLabel;
class QNetworkReply;
class QWebEnginePage;

namespace platform {

class PagePropertiesWindow : public QWidget {
public:
    explicit PagePropertiesWindow(QWebEnginePage* page);
    // The value shown under a heading ("Title:", "Address:", "Modified:", ...); "" when the
    // window has no such row.
    QString value(const QString& heading) const;
    // Everything the page and its source can say has arrived.
    bool complete() const { return m_pending == 0; }

private:
    void fillFromPage(const QVariantMap& facts);
    void fillFromServer(QNetworkReply* reply);
    void fillFromFile(const QString& path);
    void addDate(const QString& heading, const QDateTime& when);
    void addRow(const QString& heading, const QString& text);

    QFormLayout* m_form;
    QLabel* m_type;
    QLabel* m_size;
    bool m_sizeKnown = false; // a file's own size is exact; the page's guess does not replace it
    int m_pending = 0;
};

} // namespace platform

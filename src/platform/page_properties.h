#pragma once
// The page properties window of a browser pane: the page's title, address, protocol, type,
// size, and the dates the server gave, read from the page as it stands. Modeless: it waits
// for nobody.

#include <QWidget>

class QFormLayout;
class QWebEnginePage;

namespace platform {

class PagePropertiesWindow : public QWidget {
public:
    explicit PagePropertiesWindow(QWebEnginePage* page);
    // The value shown under a heading ("Title:", "Address:", ...), for tests.
    QString value(const QString& heading) const;

private:
    void fill(const QVariantMap& facts);
    QFormLayout* m_form;
};

} // namespace platform

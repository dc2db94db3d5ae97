#pragma once
// The find bar a browser pane opens on Ctrl+F: a text box, Previous and Next, Match case, a
// line that says how many matches there are or that there are none, and Escape to close it.
// It stands along the top edge of the pane.

#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QWebEngineView;

namespace platform {

class FindBar : public QWidget {
public:
    explicit FindBar(QWebEngineView* view);

    void open();
    void close();
    QString resultText() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void find(bool backward);
    void place();
    bool eventFilter(QObject* watched, QEvent* event) override;

    QWebEngineView* m_view;
    QLineEdit* m_text;
    QCheckBox* m_matchCase;
    QLabel* m_result;
};

} // namespace platform

#pragma once
// Menu entries of a window's menu bar: an entry on the bar, or one inside another entry (which
// then opens a sub-menu); the caption "-" makes a separator.

#include "control.h"

#include <QObject>

class QAction;
class QMenu;

namespace platform {

class MenuItem : public QObject {
    Q_OBJECT
public:
    MenuItem(Form& form, const char* name, const QString& caption);
    MenuItem(MenuItem& parent, const char* name, const QString& caption);

    QString Caption() const;
    bool Enabled() const;
    void setEnabled(bool enabled);
    QAction* action() const { return m_action; }
    QMenu* menu() const { return m_menu; } // null until the entry has entries of its own

    void onClick(Handler handler) { m_click = std::move(handler); }

private:
    QMenu* submenu();

    QAction* m_action = nullptr;
    QMenu* m_menu = nullptr;
    Handler m_click;
};

} // namespace platform

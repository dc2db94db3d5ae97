#include "menu.h"

#include "runtime.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace platform {

MenuItem::MenuItem(Form& form, const char* name, const QString& caption) : QObject(&form)
{
    setObjectName(QString::fromLatin1(name));
    m_menu = form.MenuBar()->addMenu(caption);
    m_menu->setObjectName(objectName());
    m_action = m_menu->menuAction();
    m_action->setObjectName(objectName());
}

MenuItem::MenuItem(MenuItem& parent, const char* name, const QString& caption) : QObject(&parent)
{
    setObjectName(QString::fromLatin1(name));
    QMenu* into = parent.submenu();
    m_action = caption == QLatin1String("-") ? into->addSeparator() : into->addAction(caption);
    m_action->setObjectName(objectName());
    connect(m_action, &QAction::triggered, this, [this] {
        if (m_click)
            runHandler(m_click);
    });
}

QMenu* MenuItem::submenu()
{
    if (!m_menu) {
        m_menu = new QMenu(m_action->text());
        m_menu->setObjectName(objectName());
        m_action->setMenu(m_menu);
        connect(this, &QObject::destroyed, m_menu, &QObject::deleteLater);
    }
    return m_menu;
}

QString MenuItem::Caption() const { return m_action->text(); }
bool MenuItem::Enabled() const { return m_action->isEnabled(); }
void MenuItem::setEnabled(bool enabled) { m_action->setEnabled(enabled); }

} // namespace platform

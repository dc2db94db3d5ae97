#include "dir_list.h"

#include "errors.h"
#include "paths.h"

#include <QDir>
#include <QEvent>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QTreeView>

namespace platform {

DirListBox::DirListBox(Container& parent, const char* name, TwipsRect rect)
    : Control(parent, name, new QTreeView, rect)
{
    tree()->header()->hide();
    watch(tree()->viewport());
    m_path = QDir::rootPath();
}

bool DirListBox::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == tree() && event->type() == QEvent::Show && !m_model)
        fill();
    return Control::eventFilter(watched, event);
}

void DirListBox::fill()
{
    m_model = new QFileSystemModel(this);
    m_model->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
    m_model->setRootPath(QDir::rootPath());
    QTreeView* t = tree();
    t->setModel(m_model);
    t->setRootIndex(m_model->index(QDir::rootPath()));
    for (int column = 1; column < m_model->columnCount(); ++column)
        t->hideColumn(column);
    // A click or an arrow key only highlights a directory; opening it (double-click or Enter)
    // makes it the Path, as a classic directory list does.
    connect(t, &QTreeView::activated, this, &DirListBox::handleActivated);
    connect(t->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        if (!m_settingPath)
            m_highlightMoved = true;
    });
    // The model reads directories in the background, and again whenever one changes on disk:
    // open the path again as its parts arrive, unless the user has moved the highlight since.
    connect(m_model, &QFileSystemModel::directoryLoaded, this, [this](const QString& loaded) {
        if (m_highlightMoved)
            return;
        if (m_path == loaded || m_path.startsWith(loaded.endsWith(QLatin1Char('/')) ? loaded : loaded + QLatin1Char('/')))
            showPath();
    });
    showPath();
}

void DirListBox::showPath()
{
    if (!m_model)
        return;
    const QModelIndex index = m_model->index(m_path);
    m_settingPath = true;
    m_highlightMoved = false;
    tree()->setCurrentIndex(index);
    for (QModelIndex parent = index.parent(); parent.isValid(); parent = parent.parent())
        tree()->expand(parent);
    tree()->expand(index);
    tree()->scrollTo(index, QAbstractItemView::PositionAtTop); // its sub-directories in view
    m_settingPath = false;
}

QTreeView* DirListBox::tree() const
{
    return static_cast<QTreeView*>(widget());
}

void DirListBox::setPath(const QString& path)
{
    const QDir dir(nativePath(path));
    if (!dir.exists())
        raiseError(ErrPathNotFound);
    const QString canonical = dir.absolutePath();
    const bool changed = canonical != m_path;
    m_path = canonical;
    showPath();
    if (changed)
        raiseChange();
}

void DirListBox::handleActivated(const QModelIndex& index)
{
    if (m_settingPath || !m_model)
        return;
    const QString path = m_model->filePath(index);
    if (path.isEmpty() || path == m_path)
        return;
    m_path = path;
    m_highlightMoved = false; // the highlight is the path again: its sub-directories are shown as they come
    raiseChange();
}

} // namespace platform

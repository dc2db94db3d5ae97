#pragma once
// The directory list: a tree of the file system's directories with a settable and readable
// Path; opening a directory in it (double-click or Enter) sets Path and raises Change.

#include "control.h"

class QFileSystemModel;
class QTreeView;

namespace platform {

class DirListBox : public Control {
    Q_OBJECT
public:
    DirListBox(Container& parent, const char* name, TwipsRect rect);

    QString Path() const { return m_path; }
    // A directory that does not exist raises "Path not found" (76).
    void setPath(const QString& path);

private:
    QTreeView* tree() const;
    void handleActivated(const QModelIndex& index);
    bool eventFilter(QObject* watched, QEvent* event) override;
    // The tree is filled when it is first shown: reading the file system costs start-up time,
    // and the holder of the theme directory is made long before anyone looks at it.
    void fill();
    void showPath();

    QFileSystemModel* m_model = nullptr;
    QString m_path;
    bool m_settingPath = false;
    bool m_highlightMoved = false; // by the user, since the path was last shown
};

} // namespace platform

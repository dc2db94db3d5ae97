#pragma once
// The directory list: a tree of the file system's directories with a settable and readable
// Path; choosing a directory in it sets Path and raises Change.

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
    void handleCurrentChanged();

    QFileSystemModel* m_model;
    QString m_path;
    bool m_settingPath = false;
};

} // namespace platform

#pragma once
// The drive list: a drop-down of this machine's mounted file systems, in the order the system
// lists them, each shown as its mount point with its volume label. Drive is the current one's
// mount point (a place the browser pane can open); picking another raises Change, picking the
// current one raises nothing.

#include "control.h"

class QComboBox;

namespace platform {

class DriveListBox : public Control {
public:
    DriveListBox(Container& parent, const char* name, TwipsRect rect);
    QString Drive() const;
    // A mount point that is not in the list raises "Device unavailable" (68).
    void setDrive(const QString& mountPoint);
    int ListCount() const;
    QString List(int index) const; // the shown text; "" outside the list

private:
    QComboBox* combo() const;
    void pick(int index);
    int m_current = 0;
};

} // namespace platform

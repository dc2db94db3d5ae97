#include "drive_list.h"

#include "errors.h"

#include <QComboBox>
#include <QDir>
#include <QStorageInfo>

namespace platform {

DriveListBox::DriveListBox(Container& parent, const char* name, TwipsRect rect)
    : Control(parent, name, new QComboBox, rect)
{
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        if (!volume.isValid() || !volume.isReady())
            continue;
        // The volume's label where it has one, else the device it lives on.
        const QString label = volume.displayName() != volume.rootPath() ? volume.displayName()
                                                                         : QString::fromLocal8Bit(volume.device());
        combo()->addItem(QStringLiteral("%1 [%2]").arg(volume.rootPath(), label), volume.rootPath());
    }
    // The current drive: the one holding the current directory, as the classic list starts.
    const QString here = QStorageInfo(QDir::currentPath()).rootPath();
    const int start = combo()->findData(here);
    m_current = start >= 0 ? start : 0;
    combo()->setCurrentIndex(m_current);
    QObject::connect(combo(), &QComboBox::activated, this, [this](int index) { pick(index); });
}

QComboBox* DriveListBox::combo() const { return static_cast<QComboBox*>(widget()); }

QString DriveListBox::Drive() const { return combo()->itemData(m_current).toString(); }

void DriveListBox::setDrive(const QString& mountPoint)
{
    const int index = combo()->findData(mountPoint);
    if (index < 0)
        raiseError(ErrDeviceUnavailable);
    combo()->setCurrentIndex(index);
    pick(index);
}

int DriveListBox::ListCount() const { return combo()->count(); }
QString DriveListBox::List(int index) const { return combo()->itemText(index); }

void DriveListBox::pick(int index)
{
    if (index == m_current)
        return;
    m_current = index;
    raiseChange();
}

} // namespace platform

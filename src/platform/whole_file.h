#pragma once
// Files the program writes are written whole: a reader finds the old content or the new one,
// never a mix, whenever the process dies. The new content goes to an unnamed file beside the
// target, which takes the target's name once it is complete, so a death mid-write leaves
// nothing behind. Where the directory takes no new file but the file itself may be written (an
// administrator's install with writable settings), the content is first kept complete in the
// user's cache and then written over the file in place; the next reading of the file finishes
// a write that death cut short.

#include <QByteArray>
#include <QString>

namespace platform {

// False when the file could not be written (it is then as it was).
bool writeWholeFile(const QString& path, const QByteArray& bytes);
// Whether writeWholeFile could write the file: its directory takes a new file, or the file
// exists and may be written.
bool canWriteWholeFile(const QString& path);
// Before the file is read: completes a write in place that was cut short.
void finishInterruptedWrite(const QString& path);
// Where the complete content of a write in place waits until it is done.
QString unfinishedWritePath(const QString& path);

} // namespace platform

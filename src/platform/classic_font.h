#pragma once
// Fonts as the windows were designed with them. Where the desktop serves a designed family
// with a face of other proportions, the face is stretched horizontally so that its characters
// advance as the designed ones do, and every designed caption fits the box it was made for.

#include <QFont>
#include <QString>

namespace platform {

QFont classicFont(const QString& family, double points, bool bold = false);

} // namespace platform

#pragma once

#include <QString>

// The font every window of the system uses.
inline const QString kWindowFont = QStringLiteral("OCR A Extended");

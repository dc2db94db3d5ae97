#pragma once
// Moments for the benchmarks and the end-to-end tests, on the monotonic clock in milliseconds: a
// window being made, loaded, painted after it is shown, hidden and unloaded, each caption and each
// message box. Off unless QT_LOGGING_RULES turns "glidepath.timing" on.

#include <QString>

namespace platform {

void logTiming(const QString& what);

} // namespace platform

#pragma once
// Moments for the benchmarks, on the monotonic clock in milliseconds: a window being made, its
// first paint after it is shown, each caption. Off unless QT_LOGGING_RULES turns
// "glidepath.timing" on.

#include <QString>

namespace platform {

void logTiming(const QString& what);

} // namespace platform

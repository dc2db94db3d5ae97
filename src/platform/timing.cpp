#include "timing.h"

#include <QLoggingCategory>

#include <chrono>

namespace platform {

Q_LOGGING_CATEGORY(lcTiming, "glidepath.timing", QtWarningMsg)

void logTiming(const QString& what)
{
    if (!lcTiming().isInfoEnabled())
        return;
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const double ms = std::chrono::duration<double, std::milli>(now).count();
    qCInfo(lcTiming).noquote() << QString::number(ms, 'f', 1) << what;
}

} // namespace platform

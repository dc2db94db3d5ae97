#include "common_dialog.h"

#include "dialogs.h"
#include "runtime.h"

#include <QFileDialog>

namespace platform {

QStringList CommonDialog::nameFilters(const QString& classicFilter)
{
    const QStringList parts = classicFilter.split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString patterns = parts[i + 1].trimmed();
        patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
        filters << parts[i].trimmed() + QStringLiteral(" (") + patterns + QLatin1Char(')');
    }
    return filters;
}

void CommonDialog::ShowOpen() { show(false); }
void CommonDialog::ShowSave() { show(true); }

void CommonDialog::show(bool save)
{
    const FileDialogRequest request{save, DialogTitle, Filter, InitDir, FileName, Flags};
    // A cancelled dialog leaves the name as it was (empty until a file has been chosen, the
    // last choice after that), or empties it where the owner asked for that.
    const QString chosen = Runtime::current().dialogs().file(request);
    if (!chosen.isEmpty() || Cancel == OnCancel::EmptyName)
        FileName = chosen;
}

} // namespace platform

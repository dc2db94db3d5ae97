#pragma once
// The common file dialog (open and save) with the classic properties, asked through the
// runtime's Dialogs.

#include "dialogs.h"

#include <QString>

namespace platform {

class CommonDialog {
public:
    QString Filter;
    QString InitDir;
    QString DialogTitle;
    QString FileName; // the chosen file; a cancel leaves it as it was, unless told otherwise
    int Flags = 0;
    // What a cancelled dialog does to FileName. Either way the name is offered again by the
    // next dialog until a cancel empties it.
    enum class OnCancel { KeepName, EmptyName };
    OnCancel Cancel = OnCancel::KeepName;
    // The control's default property: the kind of dialog last asked for through it by number
    // (1 open, 2 save). ShowOpen and ShowSave leave it at 0.
    int Action = 0;

    void ShowOpen();
    void ShowSave();

    // "Text files | *.txt;*.text" to Qt's "Text files (*.txt *.text)".
    static QStringList nameFilters(const QString& classicFilter);

private:
    void show(bool save);
};

} // namespace platform

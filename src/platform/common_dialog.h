#pragma once
// The common file dialog (open and save) with the classic properties. A test takes the
// person's answer through the runtime's file-dialog hook.

#include <QString>

namespace platform {

struct FileDialogRequest {
    bool save;
    QString title;
    QString filter;  // the classic form: "description | patterns | description | patterns"
    QString initDir;
    QString fileName;
};

class CommonDialog {
public:
    QString Filter;
    QString InitDir;
    QString DialogTitle;
    QString FileName; // the chosen file; empty after a cancel
    int Flags = 0;

    void ShowOpen();
    void ShowSave();

    // "Text files | *.txt;*.text" to Qt's "Text files (*.txt *.text)".
    static QStringList nameFilters(const QString& classicFilter);

private:
    void show(bool save);
};

} // namespace platform

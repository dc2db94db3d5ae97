#pragma once
// Every question the platform puts to a person, in one place: the message box, the file
// dialogs, the log-in prompt, and the print and page set-up dialogs. The runtime owns one
// Dialogs; a test hands it another that answers instead of a person (and only there may a
// dialog be answered by code). Certificate questions are message boxes.

#include <QString>

class QPrinter;

namespace platform {

// The classic dialog's flags that change what it asks and accepts.
enum FileDialogFlags : int {
    cdlOFNOverwritePrompt = 0x2, // a save asks before it replaces a file
    cdlOFNHideReadOnly = 0x4,
    cdlOFNFileMustExist = 0x1000, // an open insists that the name typed exists
};

struct FileDialogRequest {
    bool save;
    QString title;
    QString filter;  // the classic form: "description | patterns | description | patterns"
    QString initDir;
    QString fileName;
    int flags = 0;   // FileDialogFlags
};

class Dialogs {
public:
    virtual ~Dialogs() = default;

    // The button pressed (vbOK, vbCancel, vbYes, vbNo) for a box of the given style.
    virtual int messageBox(const QString& prompt, int style, const QString& title);
    // The file a person picks; "" for cancel.
    virtual QString file(const FileDialogRequest& request);
    // A person's answer to a log-in prompt; false for cancel.
    virtual bool login(const QString& site, QString& user, QString& password);
    // The print dialog over the printer's settings; false for cancel.
    virtual bool print(QPrinter& printer);
    // The page set-up dialog over the printer's settings; false for cancel.
    virtual bool pageSetup(QPrinter& printer);
};

} // namespace platform

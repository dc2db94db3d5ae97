#include "dialogs.h"

#include "common_dialog.h"
#include "runtime.h"
#include "timing.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>

namespace platform {

int Dialogs::messageBox(const QString& prompt, int style, const QString& title)
{
    QMessageBox box;
    // Qt titles an untitled window after the program; a blank is as empty as a title bar shows.
    box.setWindowTitle(title.isEmpty() ? QStringLiteral(" ") : title);
    box.setText(prompt);
    // Button sets the program does not use (and style values that name none) get a single OK.
    switch (style & 0x7) {
    case vbOKCancel: box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel); break;
    case vbYesNo: box.setStandardButtons(QMessageBox::Yes | QMessageBox::No); break;
    default: box.setStandardButtons(QMessageBox::Ok); break;
    }
    if (style & vbDefaultButton2)
        box.setDefaultButton(qobject_cast<QPushButton*>(box.buttons().value(1)));
    switch (style & 0x70) {
    case vbCritical: box.setIcon(QMessageBox::Critical); break;
    case vbQuestion: box.setIcon(QMessageBox::Question); break;
    case vbExclamation: box.setIcon(QMessageBox::Warning); break;
    case vbInformation: box.setIcon(QMessageBox::Information); break;
    default: break;
    }
    // A message box waits for its answer above every window of the program, top-most ones too.
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    logTiming(QStringLiteral("message ") + prompt);
    switch (box.exec()) {
    case QMessageBox::Cancel: return vbCancel;
    case QMessageBox::Yes: return vbYes;
    case QMessageBox::No: return vbNo;
    default: return vbOK;
    }
}

namespace {

// A name filter whose patterns match without regard to case, as the classic desktop's do
// ("*.MP3" finds "song.mp3"): "MP3 Files (*.MP3)" becomes "MP3 Files (*.[mM][pP]3)".
QString caseless(const QString& filter)
{
    const qsizetype open = filter.lastIndexOf(QLatin1Char('('));
    if (open < 0 || !filter.endsWith(QLatin1Char(')')))
        return filter;
    QString out = filter.left(open + 1);
    for (const QChar c : QStringView(filter).mid(open + 1)) {
        if (c.isLetter() && c.toLower() != c.toUpper())
            out += QLatin1Char('[') + c.toLower() + c.toUpper() + QLatin1Char(']');
        else
            out += c;
    }
    return out;
}

} // namespace

QString Dialogs::file(const FileDialogRequest& request)
{
    QFileDialog dialog(nullptr, request.title);
    dialog.setAcceptMode(request.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    // As the classic dialog: a name is returned as typed unless the flags ask it to exist, or
    // to be confirmed before a file of that name is replaced.
    const bool mustExist = !request.save && request.flags & cdlOFNFileMustExist;
    dialog.setFileMode(mustExist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !(request.flags & cdlOFNOverwritePrompt));
    QStringList filters = CommonDialog::nameFilters(request.filter);
    for (QString& filter : filters)
        filter = caseless(filter);
    dialog.setNameFilters(filters);
    // The descriptions as the program wrote them, without the patterns made caseless.
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    if (!request.initDir.isEmpty())
        dialog.setDirectory(request.initDir);
    if (!request.fileName.isEmpty())
        dialog.selectFile(request.fileName);
    dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

bool Dialogs::login(const QString& site, QString& user, QString& password)
{
    QDialog dialog;
    dialog.setWindowTitle(QStringLiteral("Log In"));
    auto* form = new QFormLayout(&dialog);
    auto* userBox = new QLineEdit(&dialog);
    auto* passwordBox = new QLineEdit(&dialog);
    passwordBox->setEchoMode(QLineEdit::Password);
    form->addRow(new QLabel(QStringLiteral("The site %1 asks for a user name and password.").arg(site)));
    form->addRow(QStringLiteral("User name:"), userBox);
    form->addRow(QStringLiteral("Password:"), passwordBox);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    form->addRow(buttons);
    dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    user = userBox->text();
    password = passwordBox->text();
    return true;
}

bool Dialogs::print(QPrinter& printer)
{
    QPrintDialog dialog(&printer);
    dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
    return dialog.exec() == QDialog::Accepted;
}

bool Dialogs::pageSetup(QPrinter& printer)
{
    QPageSetupDialog dialog(&printer);
    dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
    return dialog.exec() == QDialog::Accepted;
}

} // namespace platform

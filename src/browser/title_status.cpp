// The title bar as the status line: each browser event rewrites the caption and puts the
// browser's address back into the address box; progress also goes to the browser status window.

#include "main_window.h"

#include "companions/browser_status.h"
#include "platform/runtime.h"

using namespace platform;

void MainFRM::BrowserWindow_StatusTextChange(const QString&)
{
    // Errors: none trapped. The status text itself is not shown.
    // Kept: "[Inactive]" whatever the text; a user sees the title flicker to it while a page loads.
    setCaption(QStringLiteral("Glidepath - [Inactive]"));
    URLC.setText(BrowserWindow.LocationURL());
}

void MainFRM::BrowserWindow_ProgressChange(qint32 progress, qint32 progressMax)
{
    // Errors: none trapped.
    setCaption("Glidepath - [ " + BrowserWindow.LocationName() + " ] - [ Loading " + QString::number(progress) +
               "  of  " + QString::number(progressMax) + " ]");
    URLC.setText(BrowserWindow.LocationURL());
    form<BrowserStatusFRM>().PercentageLoaded.setCaption("Loading " + QString::number(progress) + "  of  " +
                                                         QString::number(progressMax));
}

void MainFRM::BrowserWindow_DownloadBegin()
{
    // Errors: none trapped.
    setCaption(QStringLiteral("Glidepath - [Begining Download]"));
    URLC.setText(BrowserWindow.LocationURL());
}

void MainFRM::BrowserWindow_DownloadComplete()
{
    // Errors: none trapped.
    setCaption(QStringLiteral("Glidepath - [Download Complete]"));
    URLC.setText(BrowserWindow.LocationURL());
}

void MainFRM::BrowserWindow_NavigateComplete2(const QString&)
{
    // Errors: none trapped.
    setCaption(QStringLiteral("Glidepath - [Done Loading]"));
    URLC.setText(BrowserWindow.LocationURL());
}

void MainFRM::BrowserWindow_DocumentComplete(const QString&)
{
    // Errors: none trapped.
    setCaption(QStringLiteral("Glidepath - [Done Loading Document]"));
    URLC.setText(BrowserWindow.LocationURL());
}

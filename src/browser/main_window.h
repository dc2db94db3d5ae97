#pragma once
// The browser's main window: six themed buttons and the pop-up check boxes in a strip at the
// top, the address box, the browser pane, the background picture behind them, and the menu
// bar. Its title bar is the browser's status line. Closing it ends the program.
//
// Each concern has its own unit: start-up and shutdown, layout, the navigation buttons and
// address box, the title status, the pop-up blocker, the menus.

#include "platform/common_dialog.h"
#include "platform/controls.h"
#include "platform/form.h"
#include "platform/menu.h"
#include "platform/timer.h"
#include "platform/web_browser.h"

#include <cstdint>

class MainFRM : public platform::Form {
public:
    MainFRM();

    // The toolbar strip, left to right.
    platform::Image Home{*this, "Home", {120, 60, 1305, 405}};
    platform::Image Back{*this, "Back", {1440, 60, 1305, 405}};
    platform::Image ForwardF{*this, "ForwardF", {2760, 60, 1305, 405}};
    platform::Image RefreshR{*this, "RefreshR", {4080, 60, 1305, 405}};
    platform::Image StopS{*this, "StopS", {5400, 60, 1305, 405}};
    platform::Image Go{*this, "Go", {6720, 60, 1305, 405}};
    platform::CheckBox BP{*this, "BP", {8160, 150, 200, 200}};
    platform::CheckBox CheckData{*this, "CheckData", {8400, 130, 1575, 255}, QStringLiteral("Block Pop-Ups")};
    // The address box and the page.
    platform::ComboBox URLC{*this, "URLC", {120, 550, 9735, 300}, QStringLiteral("http://www.google.com/")};
    platform::WebBrowser BrowserWindow{*this, "BrowserWindow", {120, 960, 9735, 6015}};
    // Hidden, and behind everything.
    platform::TextBox URLCMirror{*this, "URLCMirror", {0, 1560, 405, 375}};
    platform::Image MainFBackGroundImage{*this, "MainFBackGroundImage", {0, 480, 405, 375},
                                         platform::Image::Fit::Stretch};
    platform::Timer AdBlocker{*this, "AdBlocker", 1};
    platform::CommonDialog CD;

    // The menu bar, in menu-bar order.
    platform::MenuItem FileMNU{*this, "FileMNU", QStringLiteral("  File  ")};
    platform::MenuItem FavoritePlacesMNU{FileMNU, "FavoritePlacesMNU", QStringLiteral("Favorite Places")};
    platform::MenuItem EditHomePageMNU{FileMNU, "EditHomePageMNU", QStringLiteral("Edit Home Page")};
    platform::MenuItem Devider0{FileMNU, "Devider0", QStringLiteral("-")};
    platform::MenuItem PageMNU{FileMNU, "PageMNU", QStringLiteral("Page")};
    platform::MenuItem OpenPageMNU{PageMNU, "OpenPageMNU", QStringLiteral("Open Page")};
    platform::MenuItem SavePageMNU{PageMNU, "SavePageMNU", QStringLiteral("Save Page")};
    platform::MenuItem PagerPropertiesMNU{PageMNU, "PagerPropertiesMNU", QStringLiteral("Page Properties")};
    platform::MenuItem Devider1{FileMNU, "Devider1", QStringLiteral("-")};
    platform::MenuItem PrinterMNU{FileMNU, "PrinterMNU", QStringLiteral("Printer")};
    platform::MenuItem PrintMNU{PrinterMNU, "PrintMNU", QStringLiteral("Print")};
    platform::MenuItem PrintSetupMNU{PrinterMNU, "PrintSetupMNU", QStringLiteral("Print Setup")};
    platform::MenuItem Devider2{FileMNU, "Devider2", QStringLiteral("-")};
    platform::MenuItem Readme{FileMNU, "Readme", QStringLiteral("View Readme")};
    platform::MenuItem AboutMNU{FileMNU, "AboutMNU", QStringLiteral("About")};
    platform::MenuItem ExitMNU{FileMNU, "ExitMNU", QStringLiteral("Exit")};
    platform::MenuItem EditMNU{*this, "EditMNU", QStringLiteral("  Edit  ")};
    platform::MenuItem SelectAllMNU{EditMNU, "SelectAllMNU", QStringLiteral("Select All")};
    platform::MenuItem CopyMNU{EditMNU, "CopyMNU", QStringLiteral("Copy")};
    platform::MenuItem Devider3{EditMNU, "Devider3", QStringLiteral("-")};
    platform::MenuItem CopyURL{EditMNU, "CopyURL", QStringLiteral("Copy URL")};
    platform::MenuItem FindMNU{EditMNU, "FindMNU", QStringLiteral("Find (On This Page)")};
    platform::MenuItem ChangeMNU{*this, "ChangeMNU", QStringLiteral("Change")};
    platform::MenuItem ThemeMNU{ChangeMNU, "ThemeMNU", QStringLiteral("Theme")};
    platform::MenuItem ViewMNU{*this, "ViewMNU", QStringLiteral("  View  ")};
    platform::MenuItem TextSize{ViewMNU, "TextSize", QStringLiteral("Text Size")};
    platform::MenuItem SmallestMNU{TextSize, "SmallestMNU", QStringLiteral("Smallest")};
    platform::MenuItem SmallMNU{TextSize, "SmallMNU", QStringLiteral("Small")};
    platform::MenuItem MediumMNU{TextSize, "MediumMNU", QStringLiteral("Medium")};
    platform::MenuItem LargeMNU{TextSize, "LargeMNU", QStringLiteral("Large")};
    platform::MenuItem LargestMNU{TextSize, "LargestMNU", QStringLiteral("Largest")};
    platform::MenuItem ToolsMNU{*this, "ToolsMNU", QStringLiteral("  Tools  ")};
    platform::MenuItem BrowserStatusMNU{ToolsMNU, "BrowserStatusMNU", QStringLiteral("Browser Status")};
    platform::MenuItem DriveExplorerMNU{ToolsMNU, "DriveExplorerMNU", QStringLiteral("Drive Explorer")};
    platform::MenuItem Devider4{ToolsMNU, "Devider4", QStringLiteral("-")};
    platform::MenuItem CalculatorMNU{ToolsMNU, "CalculatorMNU", QStringLiteral("Calculator")};
    platform::MenuItem NotePadMNU{ToolsMNU, "NotePadMNU", QStringLiteral("Note Pad")};
    platform::MenuItem Devider5{ToolsMNU, "Devider5", QStringLiteral("-")};
    platform::MenuItem HTMLMNU{ToolsMNU, "HTMLMNU", QStringLiteral("HTML")};
    platform::MenuItem HTMLEditorMNU{HTMLMNU, "HTMLEditorMNU", QStringLiteral("HTML Editor")};
    platform::MenuItem HTMLViewerMNU{HTMLMNU, "HTMLViewerMNU", QStringLiteral("HTML Viewer")};
    platform::MenuItem MiscMNU{*this, "MiscMNU", QStringLiteral("  Misc.  ")};
    platform::MenuItem MP3PlayerMNU{MiscMNU, "MP3PlayerMNU", QStringLiteral("MP3 Player")};
    platform::MenuItem DoodlePadMNU{MiscMNU, "DoodlePadMNU", QStringLiteral("Doodle Pad")};
    platform::MenuItem GoIdleMNU{MiscMNU, "GoIdleMNU", QStringLiteral("Go Idle")};

    // The new-window flag: a 16-bit Boolean (0 false, -1 true) that nothing reads.
    std::int16_t NewWindowFlag = 0;

    // Start-up and shutdown.
    void ExitMNU_Click();
    // Navigation toolbar and address box.
    void Back_Click();
    void ForwardF_Click();
    void Go_Click();
    void Home_Click();
    void RefreshR_Click();
    void StopS_Click();
    void URLC_KeyPress(std::int16_t& keyAscii);
    void CopyURL_Click();
    // Title status.
    void BrowserWindow_StatusTextChange(const QString& text);
    void BrowserWindow_ProgressChange(qint32 progress, qint32 progressMax);
    void BrowserWindow_DownloadBegin();
    void BrowserWindow_DownloadComplete();
    void BrowserWindow_NavigateComplete2(const QString& url);
    void BrowserWindow_DocumentComplete(const QString& url);
    // Pop-up blocker.
    void AdBlocker_Timer();
    void BrowserWindow_NewWindow2(bool& cancel);
    // Menus: the page commands.
    void OpenPageMNU_Click();
    void SavePageMNU_Click();
    void PrintMNU_Click();
    void PrintSetupMNU_Click();
    void PagerPropertiesMNU_Click();
    void CopyMNU_Click();
    void SelectAllMNU_Click();
    void FindMNU_Click();
    void TextSize_Click(int level);
    // Menus: the windows.
    void FavoritePlacesMNU_Click();
    void EditHomePageMNU_Click();
    void BrowserStatusMNU_Click();
    void DriveExplorerMNU_Click();
    void ThemeMNU_Click();
    void GoIdleMNU_Click();
    // Menus: HTML tools.
    void HTMLEditorMNU_Click();
    void HTMLViewerMNU_Click();
    // Menus: accessories.
    void CalculatorMNU_Click();
    void NotePadMNU_Click();
    void DoodlePadMNU_Click();
    void AboutMNU_Click();
    void Readme_Click();
    void MP3PlayerMNU_Click();

protected:
    void Form_Load() override;
    void Form_Unload(int& cancel) override;
    void Form_Terminate() override;
    void Form_Resize() override;

private:
    void shutDown(bool restoreMinimised);
};

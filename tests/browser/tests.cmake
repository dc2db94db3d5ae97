# Tests of the main window.
glidepath_test(tst_browser windows browser/tst_browser.cpp)
glidepath_test(tst_menus windows browser/tst_menus.cpp)

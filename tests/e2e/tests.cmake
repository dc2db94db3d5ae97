# The real program on a screen with a window manager, driven with xdotool as a person drives it.
glidepath_test(tst_program program e2e/tst_program.cpp e2e/real_program.cpp)
glidepath_test(tst_accessories_program accessories_program e2e/tst_accessories_program.cpp e2e/real_program.cpp)
glidepath_test(tst_bad_files accessories_program e2e/tst_bad_files.cpp e2e/real_program.cpp)
# The desktops it runs on: each test starts the session it needs (a Wayland compositor, a screen
# wider than most).
qt_add_executable(tst_desktops e2e/tst_desktops.cpp e2e/real_program.cpp)
target_link_libraries(tst_desktops PRIVATE glidepath_testsupport)
add_dependencies(tst_desktops glidepath)
add_test(NAME tst_desktops COMMAND tst_desktops)
set_tests_properties(tst_desktops PROPERTIES RESOURCE_LOCK desktops TIMEOUT 300)

# The real program on a screen with a window manager, driven with xdotool as a person drives it.
glidepath_test(tst_program program e2e/tst_program.cpp e2e/real_program.cpp)
glidepath_test(tst_accessories_program accessories_program e2e/tst_accessories_program.cpp e2e/real_program.cpp)
glidepath_test(tst_bad_files accessories_program e2e/tst_bad_files.cpp e2e/real_program.cpp)

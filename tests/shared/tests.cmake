# Tests of the shared procedures, and of what every window shares.
glidepath_test(tst_procedures platform shared/tst_procedures.cpp)
glidepath_test(tst_windows windows shared/tst_windows.cpp)

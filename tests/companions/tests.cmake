# Tests of the companion windows.
glidepath_test(tst_companions windows companions/tst_companions.cpp)

# Tests of the accessories.
glidepath_test(tst_calculator platform accessories/tst_calculator.cpp)
glidepath_test(tst_accessories platform accessories/tst_accessories.cpp)

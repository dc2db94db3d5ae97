# Tests of the HTML tools.
glidepath_test(tst_htmltools windows htmltools/tst_htmltools.cpp)

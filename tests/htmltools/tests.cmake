# Tests of the htmltools windows: glidepath_test(...) lines.
glidepath_test(tst_htmltools htmltools/tst_htmltools.cpp)
target_compile_definitions(tst_htmltools PRIVATE GLIDEPATH_SOURCE_DIR="${PROJECT_SOURCE_DIR}")

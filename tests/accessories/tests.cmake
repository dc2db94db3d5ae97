# Tests of the accessories windows: glidepath_test(...) lines.
glidepath_test(tst_calculator accessories/tst_calculator.cpp)
target_compile_definitions(tst_calculator PRIVATE GLIDEPATH_SOURCE_DIR="${PROJECT_SOURCE_DIR}")

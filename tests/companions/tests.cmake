# Tests of the companion windows: glidepath_test(...) lines.
glidepath_test(tst_companions companions/tst_companions.cpp)
target_compile_definitions(tst_companions PRIVATE GLIDEPATH_SOURCE_DIR="${PROJECT_SOURCE_DIR}")

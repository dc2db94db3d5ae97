# Tests of the accessories windows: glidepath_test(...) lines.
glidepath_test(tst_calculator accessories/tst_calculator.cpp)
target_compile_definitions(tst_calculator PRIVATE GLIDEPATH_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
glidepath_test(tst_note_pad accessories/tst_note_pad.cpp)
target_compile_definitions(tst_note_pad PRIVATE GLIDEPATH_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
glidepath_test(tst_doodle accessories/tst_doodle.cpp)
target_compile_definitions(tst_doodle PRIVATE GLIDEPATH_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
glidepath_test(tst_about_windows accessories/tst_about_windows.cpp)
target_compile_definitions(tst_about_windows PRIVATE GLIDEPATH_SOURCE_DIR="${PROJECT_SOURCE_DIR}")

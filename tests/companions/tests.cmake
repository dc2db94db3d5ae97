# Tests of the companion windows: glidepath_test(...) lines.

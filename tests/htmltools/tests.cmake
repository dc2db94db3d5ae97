# Tests of the htmltools windows: glidepath_test(...) lines.

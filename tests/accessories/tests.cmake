# Tests of the accessories windows: glidepath_test(...) lines.

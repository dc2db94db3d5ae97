#!/usr/bin/env bash
# Builds the program, its tools and every test with AddressSanitizer and UndefinedBehaviorSanitizer
# (build-asan), runs the whole test suite, and fails when a sanitizer reported anything.
# Run after scripts/setup.sh (scripts/test.sh runs it). Takes some 40 minutes on two cores.
set -euo pipefail
cd "$(dirname "$0")/.."

jobs=$(nproc)
reports=$PWD/build-asan/sanitizer-reports
cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=RelWithDebInfo -DGLIDEPATH_SANITIZE=ON \
      -DGLIDEPATH_TEST_DISPLAY=:67
cmake --build build-asan -j"$jobs"
rm -rf "$reports" && mkdir -p "$reports"

# Reports go to files, so that one from the program the end-to-end tests start is seen too.
# Leak checking stays off: what it finds at exit is held by the graphics, font and web engine
# libraries for the life of the process, not lost by the program. The web engine's own code
# frees some objects with a size other than the one they were made with, a mismatch inside that
# library that the sanitizer would stop every browser test for.
export ASAN_OPTIONS="log_path=$reports/asan:detect_leaks=0:new_delete_type_mismatch=0:halt_on_error=1:abort_on_error=1:detect_stack_use_after_return=1"
export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1" # to the test's output; the end-to-end harness shows the program's
status=0
(cd build-asan && ctest --output-on-failure --parallel 5) || status=$?

if compgen -G "$reports/*" >/dev/null; then
  echo "sanitize: the sanitizers reported:"
  cat "$reports"/*
  exit 1
fi
exit $status

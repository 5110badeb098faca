#!/usr/bin/env bash
# Builds every configuration and runs every test: Linux, Linux under AddressSanitizer and
# UndefinedBehaviorSanitizer, Linux under ThreadSanitizer (the threading tests), and the Windows
# DLL with the same suite under Wine. Also compiles the benchmarks so they cannot rot.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
need_packages g++ cmake ninja-build googletest libbenchmark-dev libyuv-dev libopencv-dev \
  libswscale-dev g++-mingw-w64-x86-64-posix wine64 ca-certificates
cd "$FRAMEKIT_ROOT"
jobs=$(nproc)

run() {
  local preset=$1
  shift
  echo "=== $preset"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" -j "$jobs"
  (cd "build/$preset" && ctest -j "$jobs" --output-on-failure --timeout 600 "$@")
}

run linux
run linux-asan
run linux-tsan -R 'InitRace|Thread'
run windows
echo "=== benchmarks (build only)"
cmake --preset linux-bench >/dev/null
cmake --build --preset linux-bench -j "$jobs"
echo "All configurations passed."

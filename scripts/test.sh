#!/usr/bin/env bash
# Builds every configuration and runs every test: Linux (release, and debug, where nothing is
# inlined), the debug suite again under qemu-user on processors of class 1 and class 4 (no
# instruction above a class may run there), Linux under AddressSanitizer and
# UndefinedBehaviorSanitizer, Linux under ThreadSanitizer (the threading tests), and the Windows
# DLL with the same suite under Wine. Also compiles the benchmarks so they cannot rot.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
need_packages g++ cmake ninja-build googletest libbenchmark-dev libyuv-dev libopencv-dev \
  libswscale-dev g++-mingw-w64-x86-64-posix wine64 ca-certificates qemu-user
cd "$FRAMEKIT_ROOT"
jobs=$(nproc)

run() {
  local preset=$1
  shift
  echo "=== $preset"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" -j "$jobs"
  # A configuration whose tests went missing (a cached option, a broken glob) must not pass.
  if (cd "build/$preset" && ctest -N "$@" | grep -q "^Total Tests: 0$"); then
    echo "build/$preset has no tests" >&2
    exit 1
  fi
  (cd "build/$preset" && ctest -j "$jobs" --output-on-failure --timeout 600 "$@")
}

# The debug suite under an emulated processor, two shards at once; Init must pick `class`.
emulated() {
  local cpu=$1 class=$2 dir="build/linux-debug" status=0
  echo "=== linux-debug under qemu-x86_64 -cpu $cpu (class $class)"
  local pids=()
  for shard in 0 1; do
    (cd "$dir/bin" && FRAMEKIT_EXPECT_CLASS=$class FRAMEKIT_TEST_TMP="$PWD/../test-tmp" \
      GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX=$shard \
      qemu-x86_64 -cpu "$cpu" ./framekit_tests --gtest_brief=1 >"../qemu-$cpu-$shard.log" 2>&1) &
    pids+=($!)
  done
  for shard in 0 1; do
    if ! wait "${pids[$shard]}"; then
      status=1
      cat "$dir/qemu-$cpu-$shard.log"
    fi
    grep -E "tests? from .* ran|PASSED|FAILED" "$dir/qemu-$cpu-$shard.log" | tail -n 2 || true
  done
  return $status
}

run linux
run linux-debug
emulated kvm64 1
emulated Nehalem 4
# Allocation-failure tests ask for sizes no allocator gives: let them fail instead of aborting.
ASAN_OPTIONS=allocator_may_return_null=1 run linux-asan
run linux-tsan -R 'InitRace|Thread'
run windows
echo "=== benchmarks (build only)"
cmake --preset linux-bench >/dev/null
cmake --build --preset linux-bench -j "$jobs"
echo "All configurations passed."

#!/usr/bin/env bash
# Builds the Linux library and the framekit program, then runs the demo gallery.
# Usage: bash scripts/demo.sh [DIR]   (default DIR: ./framekit-demo)
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
need_packages g++ cmake ninja-build
out="${1:-framekit-demo}"
cd "$FRAMEKIT_ROOT"
cmake --preset linux -DFRAMEKIT_TESTS=OFF >/dev/null
cmake --build --preset linux --target framekit framekit_cli
exec "$FRAMEKIT_ROOT/build/linux/bin/framekit" demo "$(cd "$OLDPWD" && realpath -m "$out")"

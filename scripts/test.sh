#!/usr/bin/env bash
# Builds everything and passes every test: the sanitizer build with the whole suite (headless and
# Qt offscreen), then the bounded fuzz runs. This is what CI runs.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
export CCACHE_DIR="${CCACHE_DIR:-$HOME/.cache/ccache}"
jobs=$(nproc)

# Every C++ file keeps the project's format.
git ls-files -z '*.cpp' '*.h' | xargs -0 clang-format --dry-run --Werror

cmake --preset dev
cmake --build --preset dev -j "$jobs"
ctest --preset dev -j "$jobs"

if [ -f scripts/fuzz.sh ]; then
  bash scripts/fuzz.sh
fi

#!/usr/bin/env bash
# Bounded fuzz runs: builds the libFuzzer targets with clang (fuzz preset: AddressSanitizer and
# UndefinedBehaviorSanitizer) and runs each for FUZZ_SECONDS (default 60) from its starting corpus.
# Any crash, hang, leak or sanitizer report fails the run. Skipped when clang is not installed.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${FUZZ_SECONDS:-60}"
if ! command -v clang++ >/dev/null; then
  echo "fuzz: clang is not installed; skipped"
  exit 0
fi
export CCACHE_DIR="${CCACHE_DIR:-$HOME/.cache/ccache}"
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j "$(nproc)" --target fuzzers

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
build-fuzz/bin/fuzz_corpus "$work/start"
for fuzzer in build-fuzz/bin/*_fuzzer; do
  name=$(basename "$fuzzer")
  corpus="$work/corpus/$name"
  mkdir -p "$corpus"
  if [ -d "$work/start/$name" ]; then cp "$work/start/$name"/* "$corpus"/; fi
  echo "fuzz: $name for ${seconds}s"
  "$fuzzer" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2560 -max_len=65536 \
    -artifact_prefix="$work/" "$corpus" >"$work/$name.log" 2>&1 || {
    tail -n 60 "$work/$name.log"
    mkdir -p build-fuzz/artifacts && cp "$work"/crash-* "$work"/timeout-* "$work"/leak-* build-fuzz/artifacts/ 2>/dev/null || true
    echo "fuzz: $name failed (artifacts in build-fuzz/artifacts)"
    exit 1
  }
  tail -n 2 "$work/$name.log"
done

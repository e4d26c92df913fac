#!/usr/bin/env bash
# The tour: installs what is missing, builds the plug-in and mosa-host (release preset) and runs
# examples/tour.fmscript, which shows every dialog the plug-in has. On a display the dialogs
# appear for real and wait for you; without one they run on Qt offscreen, driven by
# examples/tour.answers, and a picture of each dialog state lands in build-release/tour-shots/.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
export CCACHE_DIR="${CCACHE_DIR:-$HOME/.cache/ccache}"

cmake --preset release
cmake --build --preset release -j "$(nproc)"

host=build-release/bin/mosa-host
options=()
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ] && "$host" --help | grep -q -- --shots; then
  export QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}"
  shots=build-release/tour-shots
  rm -rf "$shots" && mkdir -p "$shots"
  options+=(--ui qt --answers examples/tour.answers --shots "$shots" --trace build-release/tour.jsonl)
fi

echo "== The plug-in's functions (mosa-host --functions): id, name, prototype, min, max, flags"
"$host" --functions
echo
echo "== examples/tour.fmscript"
"$host" "${options[@]}" --cr-as-newline examples/tour.fmscript
if [ -n "${shots:-}" ]; then
  echo
  echo "== Pictures of the dialogs: $(find "$shots" -name '*.png' | wc -l) in $shots"
fi

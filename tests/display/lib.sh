# Shared by the real-display cases: a private Xvfb with openbox, mosa-host on xcb with no answers,
# and helpers for xdotool's hands and the window manager's view. A case file sources this, calls
# start_display, runs the host and asserts on what it printed, its trace and the windows' X
# properties. Every wait polls for what it waits for, with a time limit; no fixed sleep alone.
# Usage of a case: CASE.sh HOST PLUGIN
set -u
host_program=$1
plugin=$2
work=$(mktemp -d)
pids=()
host=

cleanup() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null; done
  wait 2>/dev/null
  rm -rf "$work"
}
trap cleanup EXIT

fail() {
  echo "FAIL: $*" >&2
  for f in out err; do
    [ -s "$work/$f" ] && { echo "--- mosa-host $f:" >&2; cat "$work/$f" >&2; }
  done
  exit 1
}

# Polls a command (given as words) every 0.05 s for up to $1 seconds.
poll() {
  local seconds=$1
  shift
  local end=$((SECONDS + seconds + 1))
  while ((SECONDS < end)); do
    "$@" && return 0
    sleep 0.05
  done
  return 1
}

# A display of our own (Xvfb picks a free number) with openbox managing it; arguments go to Xvfb.
# Skips the case (status 77) only when Xvfb is missing or cannot start.
start_display() {
  command -v Xvfb >/dev/null || { echo "SKIP: Xvfb is not installed"; exit 77; }
  for tool in openbox xdotool xprop xwininfo xwd wmctrl xclip; do
    command -v "$tool" >/dev/null || fail "$tool is not installed (scripts/setup.sh installs it)"
  done
  Xvfb -displayfd 5 -screen 0 1024x768x24 -nolisten tcp "$@" 5>"$work/display" 2>"$work/xvfb" &
  pids+=($!)
  poll 10 test -s "$work/display" || { echo "SKIP: Xvfb cannot start: $(cat "$work/xvfb")"; exit 77; }
  export DISPLAY=":$(head -n1 "$work/display")"
  unset QT_QPA_PLATFORM WAYLAND_DISPLAY
  openbox --sm-disable >/dev/null 2>&1 &
  pids+=($!)
  poll 10 has_window_manager || fail "openbox did not start"
}

has_window_manager() {
  xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'
}

# Runs mosa-host on xcb with the script text given on standard input; extra arguments go to it.
run_host() {
  cat >"$work/script.fmscript"
  "$host_program" --plugin "$plugin" --ui qt --trace "$work/trace" "$@" "$work/script.fmscript" \
    >"$work/out" 2>"$work/err" &
  host=$!
  pids+=($host)
}

# Prints the id of a dialog window the window manager shows, other than those given; waits for it.
dialog_window() {
  local id other
  local end=$((SECONDS + 20))
  while ((SECONDS < end)); do
    for id in $(xdotool search --onlyvisible --classname '^mosa$' 2>/dev/null); do
      for other in "$@"; do [ "$id" = "$other" ] && continue 2; done
      echo "$id"
      return 0
    done
    sleep 0.05
  done
  return 1
}

# Waits until the window has the keyboard (the window manager made it active).
wait_active() {
  poll 10 is_active "$1" || fail "window $1 never became active"
}
is_active() {
  [ "$(xdotool getactivewindow 2>/dev/null)" = "$1" ]
}

# Waits until mosa-host printed at least N lines.
wait_lines() {
  poll "${2:-10}" has_lines "$1"
}
has_lines() {
  [ "$(wc -l <"$work/out")" -ge "$1" ]
}

# Waits for mosa-host to end, within $2 seconds (default 20), and checks its exit status (default
# 0).
finish_host() {
  local expected=${1:-0} seconds=${2:-20} status
  poll "$seconds" host_gone || fail "mosa-host did not finish in $seconds seconds"
  wait "$host"
  status=$?
  [ "$status" = "$expected" ] || fail "mosa-host ended with status $status, expected $expected"
}
host_gone() {
  ! kill -0 "$host" 2>/dev/null
}

# The printed results must be exactly these lines.
expect_output() {
  local expected
  expected=$(printf '%s\n' "$@")
  [ "$(cat "$work/out")" = "$expected" ] ||
    fail "printed \"$(tr '\n' ' ' <"$work/out")\", expected \"$*\""
}

# One X property of a window, as xprop prints it after the name.
property() {
  xprop -id "$1" "$2" | sed 's/^[^=]*= //'
}

# A picture of the window's content as the X server has it.
picture() {
  xwd -silent -id "$1" >"$2" || fail "xwd could not take a picture of window $1"
}

# Whether the window is mapped and viewable (not minimised, not withdrawn).
is_viewable() {
  xwininfo -id "$1" 2>/dev/null | grep -q 'Map State: IsViewable'
}

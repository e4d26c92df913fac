#!/usr/bin/env bash
# Installs every Debian package the build, the tests and the tour need. Idempotent; run as root
# (or through sudo). Packages already present are left alone, so a second run costs one dpkg query.
set -euo pipefail

packages=(
  build-essential cmake ninja-build ccache pkg-config git
  clang libclang-rt-14-dev clang-format
  libgtest-dev libgmock-dev libbenchmark-dev
  qt6-base-dev libgl-dev fonts-dejavu-core
  libjpeg62-turbo-dev libturbojpeg0-dev libpng-dev
  libedit-dev libcli11-dev nlohmann-json3-dev libicu-dev libgmp-dev libgmp-dev
  libxcb1-dev tango-icon-theme libqt6svg6
  xvfb openbox xdotool x11-apps wmctrl x11-utils xclip
  zenity xauth
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "setup: installing ${missing[*]}"
  SUDO=""
  [ "$(id -u)" -eq 0 ] || SUDO=sudo
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
else
  echo "setup: all packages present"
fi

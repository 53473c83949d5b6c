#!/usr/bin/env bash
# Installs with apt-get what a fresh Debian 12 machine lacks to build and run Fieldwright.
set -euo pipefail
packages=(build-essential cmake ninja-build pkg-config qt6-base-dev libgl-dev libglu1-mesa-dev libegl-dev
          libgl1-mesa-dri libegl-mesa0 libglx-mesa0
          libosmium2-dev libprotozero-dev libexpat1-dev libbz2-dev zlib1g-dev
          libgtest-dev libgmock-dev libbenchmark-dev xvfb xauth
          dpkg-dev file)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  SUDO=""
  [ "$(id -u)" -eq 0 ] || SUDO=sudo
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

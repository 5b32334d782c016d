#!/usr/bin/env bash
# Installs what a fresh Debian 12 machine lacks to build, run and test the editor.
set -euo pipefail
packages=(build-essential cmake ninja-build pkg-config qt6-base-dev qt6-base-dev-tools libgl-dev
          libxkbcommon-dev libpython3.11-dev python3 libbenchmark-dev fonts-liberation
          xvfb xdotool imagemagick ccache clang-14 libclang-rt-14-dev pylint ripgrep)
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
    sudo_cmd=()
    [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
    "${sudo_cmd[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq "${missing[@]}"
fi

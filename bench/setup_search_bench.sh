#!/usr/bin/env bash
# Installs ripgrep, the peer that bench_SearchInFiles measures against, if it is missing.
set -euo pipefail
command -v rg >/dev/null 2>&1 && exit 0
sudo_cmd=()
[ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
"${sudo_cmd[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq ripgrep

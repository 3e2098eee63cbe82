#!/usr/bin/env bash
# Installs the Debian packages that building, testing and rendering need, if any is missing; with
# "windows" those that building for Windows and testing with Wine need. Needs root, or sudo.
#
#   scripts/install_dependencies.sh [windows]
set -euo pipefail

if [ "$*" = windows ]; then
  packages=(cmake ninja-build g++-mingw-w64-x86-64-posix googletest wine icoutils)
elif [ $# -eq 0 ]; then
  packages=(
    g++ cmake ninja-build pkg-config git
    libcli11-dev libtomlplusplus-dev nlohmann-json3-dev libdeflate-dev libcairo2-dev libpugixml-dev
    libgtest-dev libbenchmark-dev
    clang-format clang-tidy
    ffmpeg fonts-dejavu-core python3
  )
else
  echo "usage: scripts/install_dependencies.sh [windows]" >&2
  exit 2
fi

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' ||
    missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || {
    echo "Missing packages: ${missing[*]}. Run this as root, or install sudo." >&2
    exit 1
  }
  as_root=(sudo)
fi
echo "Installing: ${missing[*]}"
"${as_root[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends \
  "${missing[@]}" >/dev/null

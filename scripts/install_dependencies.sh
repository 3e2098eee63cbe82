#!/usr/bin/env bash
# Installs the Debian packages that building, testing and rendering need, if any is missing; with
# "windows" those that building for Windows and testing with Wine need, with "arm64" those for 64-bit ARM
# and qemu, with "browser" what testing the manual in one needs, with "hosts" the hosts that the frei0r
# filter is tested in, with "packages" what checks the Debian packages, with "farm" Slurm, whose
# services are not started, with "clang" the other compiler, its coverage tools and what
# fuzzing needs, with "desk" what the preview window and its tests need. Needs root, or sudo.
#
#   scripts/install_dependencies.sh [windows | arm64 | browser | hosts | packages | farm | clang | desk]
set -euo pipefail
cd "$(dirname "$0")/.."

if [ "$*" = windows ]; then
  packages=(cmake ninja-build g++-mingw-w64-x86-64-posix googletest wine icoutils)
elif [ "$*" = arm64 ]; then
  packages=(cmake ninja-build g++-aarch64-linux-gnu googletest qemu-user)
elif [ "$*" = browser ]; then
  packages=(chromium fonts-dejavu-core)
  command -v node >/dev/null || packages+=(nodejs)
  command -v npm >/dev/null || packages+=(npm)
elif [ "$*" = hosts ]; then
  packages=(
    ffmpeg melt gstreamer1.0-tools gstreamer1.0-plugins-base gstreamer1.0-plugins-good
    gstreamer1.0-plugins-bad kdenlive shotcut frei0r-plugins xvfb xauth x11-utils dbus
  )
elif [ "$*" = packages ]; then
  packages=(lintian)
elif [ "$*" = farm ]; then
  packages=(munge slurmctld slurmd slurm-client)
elif [ "$*" = clang ]; then
  packages=(clang libclang-rt-dev llvm)
elif [ "$*" = desk ]; then
  packages=(qt6-base-dev xvfb xauth x11-utils openbox xdotool)
elif [ $# -eq 0 ]; then
  packages=(
    g++ cmake ninja-build pkg-config git dpkg-dev file
    libcli11-dev libtomlplusplus-dev nlohmann-json3-dev libdeflate-dev libopenexr-dev libcairo2-dev libpng-dev libpugixml-dev
    libtbb-dev libgtest-dev libbenchmark-dev frei0r-plugins-dev
    clang-format clang-tidy
    ffmpeg parallel fonts-dejavu-core python3 python3-jsonschema
  )
else
  echo "usage: scripts/install_dependencies.sh [windows | arm64 | browser | hosts | packages | farm | clang | desk]" >&2
  exit 2
fi

installMissing() {
  local missing=() as_root=() package
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return

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
}

installMissing "${packages[@]}"
if [ "$*" = farm ] && [ -d /run/systemd/system ] && [ ! -e /etc/slurm/slurm.conf ]; then
  as_root=()
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  "${as_root[@]}" systemctl disable --quiet --now munge slurmctld slurmd
fi
if [ "$*" = browser ]; then
  npm ci --prefix tests/browser --no-audit --no-fund --loglevel=error >/dev/null
fi

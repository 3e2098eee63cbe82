#!/usr/bin/env bash
# Runs a program of Qt's on an X server of its own with a window manager, and ends as it does; with
# status 77, which is "skipped" to ctest, where what that needs is not installed
# (scripts/install_dependencies.sh desk).
#
#   on_a_screen.sh PROGRAM [ARGUMENT]...
set -euo pipefail

for needed in Xvfb xauth openbox xdotool xprop; do
  command -v "$needed" >/dev/null && continue
  echo "skipped: there is no $needed; run scripts/install_dependencies.sh desk"
  exit 77
done

home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
# Without any of the person's settings.
export QT_QPA_PLATFORM=xcb HOME=$home XDG_CONFIG_HOME=$home XDG_DATA_HOME=$home XDG_RUNTIME_DIR=$home
# shellcheck disable=SC2016  # the variables are of the shell within
xvfb-run -a -s '-screen 0 1600x1000x24' bash -c '
  openbox --sm-disable &
  trap "kill %1" EXIT
  for ((tries = 0; tries < 200; ++tries)); do
    xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id" && break
    sleep 0.05
  done
  "$@"' on_a_screen "$@"

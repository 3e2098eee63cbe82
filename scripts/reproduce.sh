#!/usr/bin/env bash
# Proves that every build draws the same bytes: renders the known frames as gcc and clang build the
# effect, at -O0, -O2 and -O3, for Linux and Windows on x86-64 and for Linux on arm64, with every
# instruction set that there is, on one thread and on four. Prints a table with a hash of all frames
# for each, and fails if any frame differs from tests/plugin/known_frames.txt. Windows programs run
# under Wine, those for arm64 in qemu; "scripts/install_dependencies.sh windows" and so on, with
# "arm64" and "clang", installs what that needs.
#
#   scripts/reproduce.sh [REGEX]    # only the builds that it finds: 'linux-.*-O2', say
set -euo pipefail
cd "$(dirname "$0")/.."
mkdir -p build/reproduce build/windows
export WINEPREFIX=$PWD/build/windows/wine

# reproduce SYSTEM-COMPILER-LEVEL: builds what lists the hashes, and has it do so. What users build
# is the preset; the others take their sources as one for each target, which is several times quicker.
reproduce() {
  local name=$1 folder=build/reproduce/$1 log=build/reproduce/$1.log options=()
  case $name in
    linux-x86_64-gcc-O3) folder=build/release options=(--preset release) ;;
    windows-x86_64-gcc-O3) folder=build/windows options=(--preset windows) ;;
    linux-arm64-gcc-O3) folder=build/arm64 options=(--preset arm64) ;;
    *)
      options=(-S . -B "$folder" -G Ninja -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=0)
      case $name in
        windows-*) options+=(-DCMAKE_TOOLCHAIN_FILE=cmake/windows-mingw.cmake) ;;
        linux-arm64-*) options+=(-DCMAKE_TOOLCHAIN_FILE=cmake/linux-arm64.cmake) ;;
      esac
      [[ $name != *-clang-* ]] || options+=(-DCMAKE_CXX_COMPILER=clang++ -DCMAKE_ASM_COMPILER=clang)
      case $name in
        *-O0) options+=(-DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DBRISEL_WIDE_KERNELS=OFF) ;;
        *-O2) options+=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O2) ;;
        *-O3) options+=(-DCMAKE_BUILD_TYPE=Release) ;;
      esac
      ;;
  esac
  if cmake "${options[@]}" >"$log" 2>&1 && cmake --build "$folder" --target list_frame_hashes -j 1 >>"$log" 2>&1; then
    tr -d '\r' <"$folder/frame_hashes.txt" >"build/reproduce/$name.txt"
  else
    rm -f "build/reproduce/$name.txt"
  fi
}
export -f reproduce

names=()
for system in linux-x86_64 windows-x86_64 linux-arm64; do
  for compiler in gcc clang; do
    for level in O0 O2 O3; do
      name=$system-$compiler-$level
      [[ ! $name =~ ${1:-} ]] || names+=("$name")
    done
  done
done
[ ${#names[@]} -ne 0 ] || { echo "No build is called like $1." >&2; exit 2; }
[[ ${names[*]} != *windows* || -e $WINEPREFIX ]] || WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml= wineboot --init
printf '%s\n' "${names[@]}" | xargs -P "$(nproc)" -I{} bash -c 'reproduce {}'

failed=0
printf '%-24s%-14s%-9s%-18s%s\n' BUILD INSTRUCTIONS THREADS HASH 'FRAMES THAT DIFFER'
for name in "${names[@]}"; do
  if [ ! -s "build/reproduce/$name.txt" ]; then
    printf '%-24snot built or not run: see build/reproduce/%s.log\n' "$name" "$name"
    failed=1
    continue
  fi
  while read -r instructions threads hash different; do
    printf '%-24s%-14s%-9s%-18s%s\n' "$name" "$instructions" "$threads" "$hash" "$different"
    [ -z "$different" ] || failed=1
  done <"build/reproduce/$name.txt"
done
exit $failed

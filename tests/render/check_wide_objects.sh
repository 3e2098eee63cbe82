#!/bin/sh
# Whatever an object compiled for a wider instruction set offers to the linker must be its own: the
# linker may take any copy of a shared inline function, and older processors cannot run this one.
status=0
for object in "$@"; do
  case $object in
    *avx2.cpp.*) set_name=Avx2 ;;
    *avx512.cpp.*) set_name=Avx512 ;;
    *) continue ;;
  esac
  found=$found$set_name
  foreign=$(nm -C --defined-only "$object" | grep -E ' [A-Zuvw] ' | grep -v -e "$set_name" -e ' DW\.ref\.')
  if [ -n "$foreign" ]; then
    echo "$object:" "$foreign"
    status=1
  fi
done
[ "$found" = Avx2Avx512 ] || { echo "objects missing: found $found"; exit 1; }
exit $status

#!/usr/bin/env bash
# Installs the build into a prefix, moves the prefix elsewhere, and runs three hosts against it.
# usage: consumers_test.sh BUILD_DIR THIS_DIR C_COMPILER CXX_COMPILER
set -euo pipefail
build=$1 here=$2 cc=$3 cxx=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
unset QUILLON_LIBRARY

cmake --install "$build" --prefix "$work/installed" >"$work/install.log"
mv "$work/installed" "$work/moved"  # nothing may point back to where it was installed
prefix=$work/moved

for f in lib/cmake/Quillon/QuillonConfig.cmake lib/cmake/Quillon/QuillonConfigVersion.cmake \
  lib/pkgconfig/quillon.pc include/quillon/quillon.h include/quillon/quillon_message.h bin/quillon \
  share/quillon/examples/robot_arm.xml share/doc/quillon/formats.md share/doc/quillon/embedding.md \
  lib/python3/dist-packages/quillon/__init__.py; do
  [ -e "$prefix/$f" ] || { echo "FAIL: $f is not installed"; exit 1; }
done
if grep -rl "$work/installed" "$prefix/lib/cmake" "$prefix/lib/pkgconfig"; then
  echo "FAIL: the package files name the prefix it was installed to"
  exit 1
fi

echo "== C++ host, find_package(Quillon)"
cmake -S "$here/cxx_host" -B "$work/cxx" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$cxx" \
  -DCMAKE_BUILD_TYPE=Release >"$work/cxx.log" || { cat "$work/cxx.log"; exit 1; }
cmake --build "$work/cxx" >>"$work/cxx.log" || { cat "$work/cxx.log"; exit 1; }
"$work/cxx/cxx_host"
if [ -x "$work/cxx/widget_host" ] && [ -n "${DISPLAY:-}" ]; then "$work/cxx/widget_host"; fi

echo "== C host, pkg-config"
export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
libdir=$(pkg-config --variable=libdir quillon)
# shellcheck disable=SC2046
"$cc" -std=c99 -Wall -Wextra -Wpedantic -Werror "$here/c_host.c" -o "$work/c_host" \
  $(pkg-config --cflags --libs quillon) -Wl,-rpath,"$libdir"
"$work/c_host"

echo "== Python host, PYTHONPATH"
PYTHONPATH=$prefix/lib/python3/dist-packages /usr/bin/python3 "$here/python_host.py" "$work/python.png"

echo "== the program"
"$prefix/bin/quillon" check "$prefix/share/quillon/examples/basic.xml" >/dev/null
echo "installed package: all hosts passed"

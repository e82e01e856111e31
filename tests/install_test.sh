#!/usr/bin/env bash
# Installs the build tree into a scratch prefix and builds a C user against it twice:
# through pkg-config and through find_package.
set -euo pipefail
build=$1 work=$2
rm -rf "$work" && mkdir -p "$work/src"
cmake --install "$build" --prefix "$work/prefix" >/dev/null
cat > "$work/src/user.c" <<'C'
#include <stdio.h>
#include <zelk_signal.h>
int main(void) {
    Zelk32f x[3] = {-1.5f, 2.0f, -0.0f};
    if (ZELKS_Abs_32f_I(x, 3) != ZELK_STS_NO_ERR || x[0] != 1.5f) return 1;
    Zelk32f a[4] = {1, 2, 3, 4}, b[2] = {5, 6}, c[2];  /* the matrix engine, found by the library */
    if (ZELKS_MMul_32f(a, b, c, 2, 1, 2) != ZELK_STS_NO_ERR || c[0] != 17 || c[1] != 39) return 1;
    printf("%s %s\n", ZELKS_GetLibVersion()->name, ZELKS_GetLibVersion()->version);
    return 0;
}
C
libdir=$(ls -d "$work"/prefix/lib*/ | head -1)
export PKG_CONFIG_PATH="$libdir/pkgconfig"
cc "$work/src/user.c" $(pkg-config --cflags --libs zelk_signal) -o "$work/user-pc"
LD_LIBRARY_PATH="$libdir" "$work/user-pc"
cat > "$work/src/CMakeLists.txt" <<'C'
cmake_minimum_required(VERSION 3.20)
project(user C)
find_package(ZELK_signal 2.2 REQUIRED)
add_executable(user user.c)
target_link_libraries(user PRIVATE ZELK::ZELK_signal)
C
cmake -S "$work/src" -B "$work/b" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/b" >/dev/null
LD_LIBRARY_PATH="$libdir" "$work/b/user"

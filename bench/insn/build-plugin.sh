#!/usr/bin/env bash
# Builds the instruction-counting qemu plugin into $1 (default build/bench). Its header,
# qemu-plugin.h, comes from Debian's qemu source package, fetched once and cached.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
out=${1:-build/bench}
cache=${ZELK_CACHE:-$HOME/.cache/zelk}/qemu-plugin
mkdir -p "$out" "$cache"
if [ ! -f "$cache/qemu-plugin.h" ]; then
  sudo=""; [ "$(id -u)" -eq 0 ] || sudo="sudo"
  if ! grep -rqs '^Types:.*deb-src\|^deb-src' /etc/apt/sources.list /etc/apt/sources.list.d/; then
    $sudo tee /etc/apt/sources.list.d/zelk-debsrc.sources >/dev/null <<'S'
Types: deb-src
URIs: http://deb.debian.org/debian
Suites: bookworm bookworm-updates
Components: main
Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg
S
    $sudo apt-get update -qq
  fi
  src="$cache/src"
  mkdir -p "$src"
  (cd "$src" && apt-get source --download-only qemu >/dev/null 2>&1)
  tar xJf "$src"/qemu_*.orig.tar.xz -C "$src" --wildcards '*/include/qemu/qemu-plugin.h'
  cp "$src"/qemu-*/include/qemu/qemu-plugin.h "$cache/qemu-plugin.h"
  rm -rf "$src"
fi
gcc -O2 -shared -fPIC -I"$cache" $(pkg-config --cflags glib-2.0) "$here/insncount.c" -o "$out/libinsncount.so"
echo "$out/libinsncount.so"

#!/usr/bin/env bash
# Installs what the build, the tests and the benchmarks need on Debian 12, for both
# the x86-64 host and the AArch64 cross build. Idempotent: silent when all is there.
set -euo pipefail

native=(
  g++ cmake make ninja-build pkg-config python3 file
  libsimde-dev libgtest-dev libbenchmark-dev
  libfftw3-dev libsleef-dev libopenblas-dev libopenblas0-serial
  libvolk2-dev libliquid-dev libhwy-dev libxxhash-dev
  g++-aarch64-linux-gnu binutils-aarch64-linux-gnu qemu-user
  libglib2.0-dev dpkg-dev xz-utils
)
arm64=(
  libc6:arm64 libstdc++6:arm64 libgtest-dev:arm64 libbenchmark-dev:arm64
  libfftw3-dev:arm64 libsleef-dev:arm64 libopenblas-dev:arm64 libopenblas0-serial:arm64
  libvolk2-dev:arm64 libliquid-dev:arm64 libne10-dev:arm64 libhwy-dev:arm64
  libxxhash-dev:arm64
)

sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"

missing=()
for p in "${native[@]}" "${arm64[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "install-deps: installing ${missing[*]}"
if ! dpkg --print-foreign-architectures | grep -qx arm64; then
  $sudo dpkg --add-architecture arm64
fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null

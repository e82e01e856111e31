#!/usr/bin/env bash
# Runs the benchmarks of both architectures and writes the report under build/bench/:
#   x86-64: timed with Google Benchmark (median of repetitions), ours against every peer;
#   AArch64: executed instructions per element under qemu, (count at n - count at 0) / n; for a
#   transform both runs make the plan, so the difference is one execution.
set -euo pipefail
cd "$(dirname "$0")/.."
out=build/bench
mkdir -p "$out"

echo "== x86-64: timing (this takes a few minutes)"
build/bin/zelk_bench --benchmark_min_time=0.1 --benchmark_repetitions=3 \
  --benchmark_report_aggregates_only=true --benchmark_format=json \
  --benchmark_out="$out/x86_64.json" --benchmark_out_format=json >/dev/null

echo "== AArch64: counting instructions under qemu"
plugin=$(bench/insn/build-plugin.sh "$out" | tail -1)
driver=build-aarch64/bin/zelk_insn
count() {  # function impl n fill
  QEMU_LD_PREFIX=/ qemu-aarch64 -plugin "$plugin" -d plugin "$driver" "$@" 2>&1 >/dev/null |
    sed -n 's/^insns: //p'
}
: > "$out/aarch64_counts.txt"
QEMU_LD_PREFIX=/ qemu-aarch64 "$driver" --list | while read -r fn impl sizes; do
  for n in ${sizes:-4096 1048576}; do
    echo "$fn $impl $n $(count "$fn" "$impl" "$n" "$n") $(count "$fn" "$impl" 0 "$n")" >> "$out/aarch64_counts.txt"
  done
done

python3 bench/report.py "$out"

#!/usr/bin/env bash
# Live data over TCP on loopback, publisher and viewer in two processes: messages and channel
# values applied a second, the latency from send to scene (p50, p99) while the viewer draws at
# 30 frames/s, its resident memory, and the same messages through SendChannels_v1 in process.
# Runs 1,000 and 10,000 channels a message (or CHANNELS) at 1,000 messages/s (or RATE), each
# for SECONDS (default 10; give 600 to see memory over ten minutes of flood).
#   bench/live/live-throughput.sh BUILD_DIR [SECONDS] [RATE] [CHANNELS...]
# SECONDS in whole seconds; RATE 0 sends as fast as the publisher can.
set -euo pipefail
build=${1:?build dir}
seconds=${2:-10}
rate=${3:-1000}
shift $(($# < 3 ? $# : 3))
sizes=("$@")
[ ${#sizes[@]} -gt 0 ] || sizes=(1000 10000)
tool="$build/bench/live/live_bench"
[ -x "$tool" ] || { echo "live-throughput: build $tool first (-DQUILLON_BENCH=ON)" >&2; exit 2; }
work=$(mktemp -d)
viewer=
cleanup() { [ -n "$viewer" ] && kill "$viewer" 2>/dev/null; rm -rf "$work"; }
trap cleanup EXIT
for channels in "${sizes[@]}"; do
  echo "live-throughput: $channels channels a message, $rate messages/s, ${seconds} s"
  "$tool" view "$channels" "$seconds" >"$work/view.out" &
  viewer=$!
  endpoint=
  for _ in $(seq 100); do
    endpoint=$(sed -n 's/^endpoint //p' "$work/view.out")
    [ -n "$endpoint" ] && break
    sleep 0.1
  done
  [ -n "$endpoint" ] || { echo "live-throughput: the viewer did not start" >&2; exit 1; }
  # The publisher outlasts the viewer's measurement, which starts with the first message.
  "$tool" publish "$endpoint" "$channels" "$rate" $((seconds + 2))
  wait "$viewer"
  viewer=
  grep -v '^endpoint' "$work/view.out"
done

#!/usr/bin/env bash
# The frame rate of `quillon view` on a 10,000-part scene (or PARTS parts) while a stream of
# 1,000 channels plays at 1 kHz, and how long input waits for the event loop meanwhile. Without
# a display the viewer runs under xvfb-run, on Mesa's software rasteriser.
#   bench/ui/view-fps.sh BUILD_DIR [SECONDS] [PARTS]
set -euo pipefail
build=${1:?build dir}
seconds=${2:-5}
parts=${3:-10000}
quillon="$build/apps/quillon"
workload="$build/bench/ui/ui_view_workload"
for tool in "$quillon" "$workload"; do
  [ -x "$tool" ] || { echo "view-fps: build $tool first (-DQUILLON_BENCH=ON)" >&2; exit 2; }
done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# The stream outlasts the run, so it plays at its full rate to the end.
"$workload" "$work/parts.xml" "$work/stream.qcs" "$parts" 1000 1000 $((seconds + 3))
runner=()
if [ -z "${DISPLAY:-}" ]; then runner=(xvfb-run -a -s "-screen 0 1280x1024x24"); fi
echo "view-fps: $parts parts, 1000 channels at 1 kHz, ${seconds} s, 960 x 720 window"
"${runner[@]}" "$quillon" view "$work/parts.xml" --stream "$work/stream.qcs" --duration "$seconds" --report-fps

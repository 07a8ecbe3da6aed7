#!/usr/bin/env bash
# Loads a 1,000,000-triangle document and a 10,000-part document, each in a fresh process,
# and reports InitializeViewer's time, the peak resident memory and the 800 x 600 frame time.
# First it shows what a first write to fresh memory costs here, which much of a big load is.
#   bench/scenegraph/load-and-frame.sh BUILD_DIR
set -euo pipefail
build=${1:?build dir}
tool="$build/bench/scenegraph/scenegraph_load_frame"
[ -x "$tool" ] || { echo "load-and-frame: build $tool first (-DQUILLON_BENCH=ON)" >&2; exit 2; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$tool" touch 256
"$tool" mesh 1000000 "$work/mesh.xml"
"$tool" parts 10000 "$work/parts.xml"
"$tool" measure "$work/mesh.xml"
"$tool" measure "$work/parts.xml"

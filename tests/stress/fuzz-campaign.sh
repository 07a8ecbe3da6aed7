#!/usr/bin/env bash
# A fuzzing campaign over every fuzz target of a QUILLON_FUZZ build, off CI: the targets share
# the wall time, JOBS processes at a time, each target growing its own corpus (seeded from the
# tree's) in OUT. Where there are more cores than targets, each target gets several workers.
# A target that finds something starts again on its grown corpus until its time is up. The
# report gives each target's executions, coverage (libFuzzer's cov and ft) and findings.
#   tests/stress/fuzz-campaign.sh BUILD_DIR HOURS [OUT]
# FUZZ_JOBS sets how many fuzzer processes run at once (default: the number of cores).
set -uo pipefail
build=${1:?usage: fuzz-campaign.sh BUILD_DIR HOURS [OUT]}
hours=${2:?usage: fuzz-campaign.sh BUILD_DIR HOURS [OUT]}
out=${3:-$build/fuzz-campaign}
jobs=${FUZZ_JOBS:-$(nproc 2>/dev/null || echo 2)}

shopt -s nullglob
lists=("$build"/fuzzers/*.txt)
if [ ${#lists[@]} -eq 0 ]; then
  echo "fuzz-campaign: no fuzz targets listed in $build/fuzzers (configure with -DQUILLON_FUZZ=ON)" >&2
  exit 2
fi
mkdir -p "$out/logs"
total=$(awk -v h="$hours" 'BEGIN { printf "%d", h * 3600 }')
slots=$(( ${#lists[@]} < jobs ? ${#lists[@]} : jobs ))
# Cores left over when every target runs go to more workers per target.
workers=$(( jobs / slots ))
rounds=$(( (${#lists[@]} + slots - 1) / slots ))
each=$(( total / rounds ))
[ "$each" -lt 10 ] && each=10
echo "fuzz-campaign: ${#lists[@]} targets, $slots at a time with $workers workers each, $each s each; corpora and findings in $out"

work_on() { # list file, worker number: runs one fuzzer process after another until time is up
  local exe corpus dict name
  { read -r exe; read -r corpus; read -r dict; } <"$1"
  name=$(basename "$1" .txt)
  local worker=$2 work="$out/corpus/$name" findings="$out/findings/$name"
  local end=$((SECONDS + each)) runs=0 execs=0 cov=0 ft=0
  while [ $SECONDS -lt $end ]; do
    local left=$((end - SECONDS)) began=$SECONDS log="$out/logs/$name.$worker.$runs.log"
    # Workers of one target share its corpus folder; libFuzzer reloads what the others add.
    ASAN_OPTIONS=detect_leaks=1:allocator_may_return_null=1 \
      "$exe" -max_total_time=$left -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
      ${dict:+-dict="$dict"} -artifact_prefix="$findings/" "$work" "$corpus" >"$log" 2>&1
    local status=$?
    runs=$((runs + 1))
    local n
    n=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
    execs=$((execs + ${n:-0}))
    local last
    last=$(grep -E '^#[0-9]+' "$log" | tail -1)
    if [[ $last =~ cov:\ ([0-9]+)\ ft:\ ([0-9]+) ]]; then
      cov=${BASH_REMATCH[1]}
      ft=${BASH_REMATCH[2]}
    fi
    # A crash on the corpus itself would only repeat.
    if [ $status -ne 0 ] && [ $((SECONDS - began)) -lt 5 ]; then break; fi
    [ $status -eq 0 ] && break
  done
  echo "$runs $execs $cov $ft" >"$out/logs/$name.$worker.stats"
}

campaign() { # list file: runs one target, with its workers, for its share of the time
  local name
  name=$(basename "$1" .txt)
  mkdir -p "$out/corpus/$name" "$out/findings/$name"
  local w
  for ((w = 0; w < workers; w++)); do work_on "$1" "$w" & done
  wait
  local runs=0 execs=0 cov=0 ft=0 r e c f
  for ((w = 0; w < workers; w++)); do
    read -r r e c f <"$out/logs/$name.$w.stats"
    runs=$((runs + r))
    execs=$((execs + e))
    [ "$c" -gt "$cov" ] && cov=$c
    [ "$f" -gt "$ft" ] && ft=$f
  done
  printf '%-28s %6d %14d %8d %8d %8d %9d\n' "$name" "$runs" "$execs" "$cov" "$ft" \
    "$(find "$out/corpus/$name" -type f | wc -l)" "$(find "$out/findings/$name" -type f | wc -l)" \
    >"$out/logs/$name.summary"
}

pids=()
for list in "${lists[@]}"; do
  while [ "$(jobs -rp | wc -l)" -ge "$slots" ]; do sleep 5; done
  campaign "$list" &
  pids+=($!)
done
wait "${pids[@]}"

{
  printf '%-28s %6s %14s %8s %8s %8s %9s\n' target runs executions cov ft corpus findings
  for list in "${lists[@]}"; do cat "$out/logs/$(basename "$list" .txt).summary"; done
  for list in "${lists[@]}"; do
    name=$(basename "$list" .txt)
    for f in "$out/findings/$name"/*; do echo "finding: $name: $f"; done
  done
} | tee "$out/report.txt"
! grep -q '^finding:' "$out/report.txt"

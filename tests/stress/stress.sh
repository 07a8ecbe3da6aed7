#!/usr/bin/env bash
# Runs the random host with new seeds, each in a child process of its own, until the time is up,
# and reports every seed that crashed, broke a promise of the interface or met an OpenGL error,
# with the command that replays it.
#   tests/stress/stress.sh RANDOM_HOST [SECONDS] [SECONDS_PER_SEED] [HOST OPTIONS...]
# STRESS_JOBS runs that many seeds at once (default 1); STRESS_OUT keeps the logs (default: a
# new folder under /tmp).
set -uo pipefail
host=${1:?usage: stress.sh RANDOM_HOST [SECONDS] [SECONDS_PER_SEED] [HOST OPTIONS...]}
total=${2:-600}
each=${3:-60}
shift $(($# < 3 ? $# : 3))
jobs=${STRESS_JOBS:-1}
out=${STRESS_OUT:-$(mktemp -d /tmp/quillon-stress.XXXXXX)}
mkdir -p "$out"

end=$((SECONDS + total))
seeds=0 calls=0 findings=()

collect() { # seed: reads its log once the child has ended
  local seed=$1 log="$out/seed-$1.log" status
  status=$(cat "$out/seed-$seed.status")
  seeds=$((seeds + 1))
  local n
  n=$(sed -n 's/^random host: seed [0-9]*: \([0-9]*\) calls.*/\1/p' "$log" | tail -1)
  calls=$((calls + ${n:-0}))
  if [ "$status" -ne 0 ] || grep -q "OpenGL error" "$log"; then
    local replay
    replay=$(grep -oE "random_host --seed [0-9]+ --calls [0-9]+( --x11)?" "$log" | tail -1)
    findings+=("seed $seed: exit status $status; ${replay:-random_host --seed $seed}; log $log")
    echo "stress: FOUND seed $seed (exit status $status): ${replay:-random_host --seed $seed}"
    grep -m 3 -E "ERROR|runtime error|OpenGL error|random host:" "$log" | sed 's/^/  /'
  else
    rm -f "$log"
  fi
  rm -f "$out/seed-$seed.status"
}

running=()
while [ $SECONDS -lt $end ] || [ ${#running[@]} -gt 0 ]; do
  if [ $SECONDS -lt $end ] && [ ${#running[@]} -lt "$jobs" ]; then
    seed=$(od -An -N6 -tu8 /dev/urandom | tr -d ' ')
    left=$((end - SECONDS))
    (
      "$host" --seed "$seed" --seconds $((left < each ? left : each)) "$@" >"$out/seed-$seed.log" 2>&1
      echo $? >"$out/seed-$seed.status"
    ) &
    running+=("$seed")
    continue
  fi
  sleep 1
  still=()
  for s in "${running[@]}"; do
    if [ -f "$out/seed-$s.status" ]; then collect "$s"; else still+=("$s"); fi
  done
  running=("${still[@]+"${still[@]}"}")
done

echo "stress: $seeds seeds, $calls calls in $total s; ${#findings[@]} findings (logs in $out)"
for f in "${findings[@]+"${findings[@]}"}"; do echo "  $f"; done
[ ${#findings[@]} -eq 0 ]

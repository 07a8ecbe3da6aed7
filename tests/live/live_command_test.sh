#!/usr/bin/env bash
# Drives the live commands of the quillon program over loopback and ipc endpoints: a recording
# goes out and comes back byte for byte, render waits for live messages or gives up, and the
# proxy forwards with CURVE keys only to the viewers that hold them.
# usage: live_command_test.sh QUILLON EXAMPLES_DIR
set -u
quillon=$1
examples=$2
work=$(mktemp -d)
pids=()
cleanup() {
  for p in "${pids[@]}"; do kill "$p" 2>/dev/null; done
  wait 2>/dev/null
  rm -rf "$work"
}
trap cleanup EXIT
failures=0

fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

# expect STATUS NAME -- COMMAND...: runs the command, keeps its output in $out and $err.
expect() {
  local want=$1 name=$2
  shift 3
  timeout 60 "$@" >"$work/out" 2>"$work/err"
  local got=$?
  out=$(cat "$work/out")
  err=$(cat "$work/err")
  [ "$got" = "$want" ] || fail "$name: exit status $got, wanted $want; stdout: $out; stderr: $err"
}

contains() { # NAME TEXT NEEDLE
  case "$2" in *"$3"*) ;; *) fail "$1: '$3' not in: $2" ;; esac
}

# start NAME -- COMMAND...: runs the command in the background with its output in $work/NAME.*;
# its process id goes into $last. The command must end by itself (--duration, --timeout).
start() {
  local name=$1
  shift 2
  "$@" >"$work/$name.out" 2>"$work/$name.err" &
  last=$!
  pids+=("$last")
}

# bound NAME: the endpoint that the background command NAME says it bound, within 10 s.
bound() {
  for _ in $(seq 100); do
    local endpoint
    endpoint=$(sed -n 's/^quillon [a-z]*: bound //p' "$work/$1.err" | head -n 1)
    [ -n "$endpoint" ] && { echo "$endpoint"; return 0; }
    sleep 0.1
  done
  return 1
}

# finished NAME PID STATUS: waits for a background command and checks how it ended.
finished() {
  wait "$2"
  local got=$?
  [ "$got" = "$3" ] || fail "$1: exit status $got, wanted $3; stdout: $(cat "$work/$1.out"); stderr: $(cat "$work/$1.err")"
}

# The channel-group messages of a stream file, one hex line each, without their times.
messages() {
  /usr/bin/python3 - "$1" <<'PY'
import struct, sys
data = open(sys.argv[1], 'rb').read()
assert data[:4] == b'QCS1'
at = 4
while at < len(data):
    _, n = struct.unpack_from('<QI', data, at)
    print(data[at + 12:at + 12 + n].hex())
    at += 12 + n
PY
}

# publish -> record gives the recording back, message for message, byte for byte.
start record -- "$quillon" record --bind 'tcp://127.0.0.1:*' --topic 'Arm[1]' --messages 120 --duration 30 \
  -o "$work/recorded.qcs"
recorder=$last
endpoint=$(bound record) || fail "record did not say where it bound: $(cat "$work/record.err")"
expect 0 "publish to the recorder" -- "$quillon" publish "$examples/robot_arm.qcs" --connect "$endpoint" --speed 20 \
  --wait-subscribers 1
contains "publish to the recorder" "$out" "Published 120 messages"
finished record "$recorder" 0
[ "$(messages "$examples/robot_arm.qcs")" = "$(messages "$work/recorded.qcs")" ] ||
  fail "the recording differs from what was published"

# render waits for live messages, with one image for each one applied; what comes while an
# image is written is conflated, so the publisher goes on until render has its three.
start publish -- "$quillon" publish "$examples/robot_arm.qcs" --bind "ipc://$work/bus" --loop --speed 4 --duration 60
publisher=$last
expect 0 "render live" -- "$quillon" render "$examples/robot_arm.xml" --connect "ipc://$work/bus" --messages 3 \
  --timeout 30 --size 160x120 --frames "$work/frames"
[ "$(ls "$work/frames" | wc -l)" = 3 ] || fail "render wrote other frames than 3: $(ls "$work/frames")"
kill -INT "$publisher"
finished publish "$publisher" 0

# Nobody publishes: render gives up at its time-out and says how many messages came.
expect 1 "render without a publisher" -- "$quillon" render "$examples/robot_arm.xml" --connect "ipc://$work/nobody" \
  --messages 2 --timeout 1 -o "$work/never.png"
contains "render without a publisher" "$err" "the time-out passed after 0 of 2 messages; 0 arrived"
[ ! -e "$work/never.png" ] || fail "render wrote an image after its time-out"

# Through the proxy, with keys: the viewer with the proxy's key hears the publisher, one
# without it hears nothing, and a stop signal ends the proxy and the publisher cleanly.
for who in proxy publisher viewer stranger; do
  expect 0 "keygen $who" -- "$quillon" keygen "$work/$who"
done
[ "$(stat -c %a "$work/proxy.secret")" = 600 ] || fail "a secret key file is readable by others"
start proxy -- "$quillon" proxy --frontend "ipc://$work/front" --backend "ipc://$work/back" \
  --curve-secret-key "$work/proxy.secret" --curve-client-key "$work/publisher.public" \
  --curve-client-key "$work/viewer.public" --duration 60
proxy=$last
start publish -- "$quillon" publish "$examples/robot_arm.qcs" --connect "ipc://$work/front" --loop --speed 4 \
  --curve-server-key "$work/proxy.public" --curve-secret-key "$work/publisher.secret" --duration 60
publisher=$last
expect 0 "render through the proxy" -- "$quillon" render "$examples/robot_arm.xml" --connect "ipc://$work/back" \
  --curve-server-key "$work/proxy.public" --curve-secret-key "$work/viewer.secret" --messages 2 --timeout 20 \
  --size 160x120 -o "$work/proxied.png"
[ -s "$work/proxied.png" ] || fail "render through the proxy wrote no image"
expect 1 "render through the proxy without keys" -- "$quillon" render "$examples/robot_arm.xml" \
  --connect "ipc://$work/back" --messages 1 --timeout 1 -o "$work/unkeyed.png"
expect 1 "render through the proxy with a stranger's key" -- "$quillon" render "$examples/robot_arm.xml" \
  --connect "ipc://$work/back" --curve-server-key "$work/proxy.public" --curve-secret-key "$work/stranger.secret" \
  --messages 1 --timeout 1 -o "$work/stranger.png"
kill -TERM "$publisher" "$proxy"
finished publish "$publisher" 0
finished proxy "$proxy" 0
contains "proxy" "$(cat "$work/proxy.out")" "Forwarded "

# Usage errors and bad keys.
expect 2 "publish without an endpoint" -- "$quillon" publish "$examples/robot_arm.qcs"
contains "publish without an endpoint" "$err" "give --bind ENDPOINT or --connect ENDPOINT"
expect 2 "render from a stream and live" -- "$quillon" render "$examples/robot_arm.xml" --stream \
  "$examples/robot_arm.qcs" --connect "ipc://$work/x" -o "$work/x.png"
cat >"$work/still.xml" <<'XML'
<?xml version="1.0"?>
<Visualisation><Version>1.0</Version><Scene format="VRML97"><![CDATA[#VRML V2.0 utf8
Shape { geometry Box { size 0.1 0.1 0.1 } }
]]></Scene></Visualisation>
XML
expect 2 "render live for a document without groups" -- "$quillon" render "$work/still.xml" \
  --connect "ipc://$work/x" -o "$work/x.png"
contains "render live for a document without groups" "$err" "nothing to wait for"
expect 2 "record without topics" -- "$quillon" record --connect "ipc://$work/x" -o "$work/x.qcs"
expect 2 "record a topic without a group" -- "$quillon" record --connect "ipc://$work/x" --topic Arm -o "$work/x.qcs"
expect 1 "a key that is none" -- "$quillon" render "$examples/robot_arm.xml" --connect "ipc://$work/x" \
  --curve-server-key "$work/no-such-key" -o "$work/x.png"
contains "a key that is none" "$err" "is neither a key"
expect 2 "view from a stream and live" -- "$quillon" view "$examples/robot_arm.xml" --stream \
  "$examples/robot_arm.qcs" --connect "ipc://$work/x"

if [ $failures -ne 0 ]; then
  echo "$failures checks failed"
  exit 1
fi
echo "live commands: all checks passed"

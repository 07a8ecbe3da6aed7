#!/usr/bin/env bash
# Drives the quillon program over good and bad input and checks what the user sees.
# usage: command_line_test.sh QUILLON EXAMPLES_DIR
set -u
quillon=$1
examples=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

# expect STATUS NAME -- COMMAND...: runs the command, keeps its output in $out and $err.
expect() {
  local want=$1 name=$2
  shift 3
  "$@" >"$work/out" 2>"$work/err"
  local got=$?
  out=$(cat "$work/out")
  err=$(cat "$work/err")
  [ "$got" = "$want" ] || fail "$name: exit status $got, wanted $want; stdout: $out; stderr: $err"
}

contains() { # NAME TEXT NEEDLE
  case "$2" in *"$3"*) ;; *) fail "$1: '$3' not in: $2" ;; esac
}

# Every example loads, apart from the one that shows a fault.
for doc in "$examples"/*.xml; do
  case "$doc" in
    *faulty*) expect 1 "check $doc" -- "$quillon" check "$doc" --annotated "$work/annotated.xml" ;;
    *) expect 0 "check $doc" -- "$quillon" check "$doc" ;;
  esac
done

# render and view refuse what check refuses, with the same list and the same status.
printf 'not a document' >"$work/text.xml"
: >"$work/empty.xml"
mkdir "$work/folder"
for doc in "$work/text.xml" "$work/empty.xml" "$examples/faulty-route.xml"; do
  expect 1 "check $doc" -- "$quillon" check "$doc" --annotated "$work/annotated.xml"
  list=$(printf '%s\n' "$out" | grep -E '^[0-9]+: ')
  expect 1 "render $doc" -- "$quillon" render "$doc" -o "$work/refused.png"
  [ "$(printf '%s\n' "$err" | grep -E '^[0-9]+: ')" = "$list" ] || fail "render $doc lists other errors than check"
  [ ! -e "$work/refused.png" ] || fail "render $doc wrote an image of a refused document"
  expect 1 "view $doc" -- env -u DISPLAY -u WAYLAND_DISPLAY "$quillon" view "$doc"
  [ "$(printf '%s\n' "$err" | grep -E '^[0-9]+: ')" = "$list" ] || fail "view $doc lists other errors than check"
done
for cmd in check render view; do
  extra=()
  [ $cmd = render ] && extra=(-o "$work/x.png")
  expect 2 "$cmd of a folder" -- "$quillon" $cmd "$work/folder" "${extra[@]}"
  contains "$cmd of a folder" "$err" "cannot read"
done

# A stream for another document is reported, by group; a good one is not.
expect 0 "render a foreign stream" -- "$quillon" render "$examples/basic.xml" --stream "$examples/robot_arm.qcs" \
  -o "$work/foreign.png"
contains "render a foreign stream" "$err" "does not need: Arm[1] (120)"
expect 0 "render the example" -- "$quillon" render "$examples/robot_arm.xml" --stream "$examples/robot_arm.qcs" \
  -o "$work/arm.png"
[ -z "$err" ] || fail "render the example complained: $err"
[ -s "$work/arm.png" ] || fail "render the example wrote no image"

# Messages that the viewer refuses are listed once each and then summed up by code.
{
  printf 'QCS1'
  for i in $(seq 0 9); do
    # time, length 66, then flags 1, name "Probe1", group 2, two channels, each a 3D record;
    # the document's channel 1 is 1D
    printf '\x00\x00\x00\x00\x00\x00\x00\x00\x42\x00\x00\x00\x01\x00\x06\x00Probe1\x02\x00\x00\x00\x02\x00'
    for channel in 0 1; do
      printf '\x02'
      head -c 24 /dev/zero
    done
  done
} >"$work/mismatch.qcs"
expect 0 "render a mismatched stream" -- "$quillon" render "$examples/basic.xml" --stream "$work/mismatch.qcs" \
  -o "$work/mismatch.png"
contains "render a mismatched stream" "$err" "10 messages of the stream were not taken cleanly"
contains "render a mismatched stream" "$err" "message 2: 1290100: "
contains "render a mismatched stream" "$err" "code 1290100 in 10 messages in all (messages 0 to 9)"
[ "$(printf '%s\n' "$err" | grep -c 'message [0-9]*: 1290100')" = 3 ] || fail "repeats are not summed up: $err"

# Without a camera of its own, render frames every example: the scene fills a fair part of the
# picture. --camera places the camera as given; one behind the scene shows the background only.
coverage() { /usr/bin/python3 "$(dirname "$0")/png_coverage.py" "$1"; }
for doc in "$examples"/*.xml; do
  case "$doc" in *faulty*) continue ;; esac
  expect 0 "render $doc framed" -- "$quillon" render "$doc" --size 160x120 -o "$work/framed.png"
  share=$(coverage "$work/framed.png")
  awk -v s="$share" 'BEGIN { exit !(s > 0.05 && s < 0.9) }' || fail "render $doc framed covers $share of the picture"
done
expect 0 "render with a camera" -- "$quillon" render "$examples/basic.xml" --size 160x120 -o "$work/cam.png" \
  --camera "0 0 -1;0 1 0 0;;;;"
[ "$(coverage "$work/cam.png")" = "0.000" ] || fail "a camera looking away still shows the box"
expect 2 "render with seven camera texts" -- "$quillon" render "$examples/basic.xml" -o "$work/cam.png" \
  --camera "1;2;3;4;5;6;7"
expect 2 "render with an unreadable camera" -- "$quillon" render "$examples/basic.xml" -o "$work/cam.png" \
  --camera "a b c"

# Usage errors.
expect 2 "frames without a stream" -- "$quillon" render "$examples/basic.xml" --frames "$work/frames"
contains "frames without a stream" "$err" "needs --stream"
expect 1 "unwritable image" -- "$quillon" render "$examples/basic.xml" -o "$work/missing/out.png"
[ "$err" = "quillon render: cannot write $work/missing/out.png" ] || fail "unwritable image: $err"
expect 1 "image over a folder" -- "$quillon" render "$examples/basic.xml" -o "$work/folder"
[ -z "$(ls -A "$work/folder")" ] || fail "a failed write left files behind: $(ls -A "$work/folder")"
expect 2 "speed 0" -- "$quillon" view "$examples/basic.xml" --speed 0
[ "$err" = "quillon view: --speed must be above 0 (1 is real time, 2 twice as fast)" ] || fail "speed 0: $err"
expect 2 "unknown subcommand" -- "$quillon" rendr x
contains "unknown subcommand" "$err" "unknown subcommand 'rendr'"
expect 0 "version" -- "$quillon" --version
contains "version" "$out" "quillon "

if [ $failures -ne 0 ]; then
  echo "$failures checks failed"
  exit 1
fi
echo "command line: all checks passed"

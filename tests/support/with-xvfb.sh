#!/usr/bin/env bash
# Runs a command on a private virtual display server, stopped on the way out:
#
#   with-xvfb.sh CMD [ARG...]
set -euo pipefail
[ $# -gt 0 ] || { echo "usage: $0 CMD [ARG...]" >&2; exit 2; }

# Outside TMPDIR, which test programs empty when they start.
dir=$(mktemp -d /tmp/sagwerk-xvfb.XXXXXX)
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$dir/display" 2>"$dir/log" &
pid=$!
cleanup() {
    kill "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
    rm -rf "$dir"
}
trap cleanup EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

for _ in $(seq 100); do
    [ -s "$dir/display" ] && break
    sleep 0.1
done
[ -s "$dir/display" ] || { echo "$0: Xvfb did not start" >&2; cat "$dir/log" >&2; exit 1; }
export DISPLAY=":$(tr -d '[:space:]' <"$dir/display")" QT_QPA_PLATFORM=xcb
"$@"

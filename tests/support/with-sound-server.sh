#!/usr/bin/env bash
# Runs a command with a private PulseAudio server whose only output is a null sink, so
# that playback tests really play, with no sound card and without the user's own server:
#
#   with-sound-server.sh CMD [ARG...]
#
# The server, its socket and its state live in a fresh folder; both go on the way out.
set -euo pipefail
[ $# -gt 0 ] || { echo "usage: $0 CMD [ARG...]" >&2; exit 2; }

# A short path under /tmp: socket paths are limited to about 100 bytes.
dir=$(mktemp -d /tmp/sagwerk-sound.XXXXXX)
chmod 700 "$dir"
pid=
cleanup() {
    if [ -n "$pid" ]; then
        kill "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    fi
    rm -rf "$dir"
}
trap cleanup EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

export HOME="$dir/home" XDG_RUNTIME_DIR="$dir" XDG_CONFIG_HOME="$dir/config" \
    PULSE_RUNTIME_PATH="$dir/pulse" PULSE_STATE_PATH="$dir/state"
mkdir -p "$HOME" "$XDG_CONFIG_HOME"
unset PULSE_SERVER PULSE_SINK
socket="$dir/pulse.sock"

# -n: no default configuration, only the two modules named here.
pulseaudio -n --daemonize=no --use-pid-file=no --exit-idle-time=-1 --log-target=stderr \
    --load="module-native-protocol-unix socket=$socket auth-anonymous=1" \
    --load="module-null-sink sink_name=sagwerk_null" \
    >"$dir/pulse.log" 2>&1 &
pid=$!
export PULSE_SERVER="unix:$socket"
for _ in $(seq 100); do
    pactl info >/dev/null 2>&1 && break
    sleep 0.1
done
pactl info >/dev/null 2>&1 || { echo "$0: the sound server did not start" >&2; cat "$dir/pulse.log" >&2; exit 1; }

"$@"

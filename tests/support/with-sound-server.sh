#!/usr/bin/env bash
# Runs a command against a throw-away sound server, never the developer's own:
#
#   with-sound-server.sh [--tone | --speech | --none] -- CMD [ARG...]
#
# --tone (default): a private PulseAudio whose default input "microphone" hears a 440 Hz
#   tone, played in real time into a null sink whose monitor feeds that input; the
#   default output is another null sink. (PulseAudio's own sine source has a fixed
#   latency of two seconds, which starves clients that ask for short fragments, as Qt
#   does; a null sink follows the latency its clients ask for.)
# --speech: the same, but the microphone hears German speech (espeak-ng) again and again,
#   with a second of silence between the rounds.
# --speech-once: the speech once, four seconds in, then silence.
# --none: no sound server at all, so that no input device exists.
# HOME and the runtime folders point into a fresh folder, so that no PipeWire or
# PulseAudio of the desktop is found instead. Everything started here is stopped, and
# the folder removed, on the way out.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/session-common.sh"
session_arguments tone --tone --speech --speech-once --none -- "$@"
session_folder sagwerk-sound

export XDG_RUNTIME_DIR="$dir/run" PULSE_RUNTIME_PATH="$dir/pulse" PULSE_STATE_PATH="$dir/pulse-state" \
    PIPEWIRE_RUNTIME_DIR="$dir/run"
mkdir -p "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"
unset PIPEWIRE_REMOTE
# Clients must never start a server of their own.
printf 'autospawn = no\n' >"$dir/client.conf"
export PULSE_CLIENTCONFIG="$dir/client.conf" PULSE_SERVER="unix:$dir/native"

if [ "$mode" != none ]; then
    pulseaudio --daemonize=no --exit-idle-time=-1 -n --use-pid-file=no --disable-shm=yes \
        --load="module-native-protocol-unix socket=$dir/native auth-anonymous=1" \
        --load="module-null-sink sink_name=speakers" \
        --load="module-null-sink sink_name=room rate=44100 channels=1" \
        --load="module-remap-source master=room.monitor source_name=microphone" \
        ${SAGWERK_PULSE_LOG:+-vvv} >"${SAGWERK_PULSE_LOG:-$dir/pulseaudio.log}" 2>&1 &
    pids+=($!)
    answers() { pactl info >/dev/null 2>&1; }
    wait_for 100 answers || { echo "$0: PulseAudio did not start" >&2; cat "$dir/pulseaudio.log" >&2; exit 1; }
    pactl set-default-source microphone
    pactl set-default-sink speakers
    if [ "$mode" != tone ]; then
        espeak-ng -v de -s 150 -w "$dir/speech.wav" "Guten Tag und willkommen zu unserem Gespräch. \
Heute sprechen wir über die alte Mühle am Fluss, über das Wasserrad und über die Menschen, \
die dort gearbeitet haben. Mein Großvater war Müller, und er hat mir viel davon erzählt."
        # Rounds of speech for ten minutes at most, paced by the sink's clock.
        play() { sox -q "$dir/speech.wav" -t raw -r 44100 -e signed -b 16 -c 1 - pad 0 1 repeat 30 2>/dev/null; }
        if [ "$mode" = speech-once ]; then
            play() { sox -q "$dir/speech.wav" -t raw -r 44100 -e signed -b 16 -c 1 - pad 4 120 2>/dev/null; }
        fi
    else
        # Ten minutes of tone, paced by the sink's clock.
        play() { sox -q -n -t raw -r 44100 -e signed -b 16 -c 1 - synth 600 sine 440 vol 0.5 2>/dev/null; }
    fi
    play | pacat --playback --device=room --latency-msec=20 --raw --format=s16le --rate=44100 --channels=1 \
            2>"$dir/pacat.log" &
    pids+=($!)
fi

"${command[@]}"

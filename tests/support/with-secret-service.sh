#!/usr/bin/env bash
# Runs a command in a throw-away desktop session, so that tests of the key store never
# reach the developer's own keyring:
#
#   with-secret-service.sh [--no-keyring | --no-bus] -- CMD [ARG...]
#
# Default: a private D-Bus session bus with an unlocked gnome-keyring as Secret Service.
# --no-keyring: the private bus only, with no Secret Service on it.
# --no-bus: no bus at all; the session bus address points at nothing.
# HOME and the XDG folders point into a fresh folder in every mode; SAGWERK_SESSION_DIR
# names it. Everything started here is stopped, and the folder removed, on the way out.
set -euo pipefail

mode=keyring
while [ $# -gt 0 ]; do
    case $1 in
        --no-keyring) mode=no-keyring; shift ;;
        --no-bus) mode=no-bus; shift ;;
        --) shift; break ;;
        *) echo "usage: $0 [--no-keyring | --no-bus] -- CMD [ARG...]" >&2; exit 2 ;;
    esac
done
[ $# -gt 0 ] || { echo "usage: $0 [--no-keyring | --no-bus] -- CMD [ARG...]" >&2; exit 2; }

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# A short path under /tmp: socket paths are limited to about 100 bytes.
dir=$(mktemp -d /tmp/sagwerk-session.XXXXXX)
chmod 700 "$dir"
pids=()
cleanup() {
    local pid
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
    for pid in "${pids[@]}"; do wait "$pid" 2>/dev/null || true; done
    rm -rf "$dir"
}
trap cleanup EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

export HOME="$dir/home" XDG_CONFIG_HOME="$dir/config" XDG_DATA_HOME="$dir/data" \
    XDG_CACHE_HOME="$dir/cache" XDG_RUNTIME_DIR="$dir" SAGWERK_SESSION_DIR="$dir"
mkdir -p "$HOME" "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME"
# Nothing here may pick a desktop's own wallet instead of the Secret Service.
unset XDG_CURRENT_DESKTOP DESKTOP_SESSION KDE_FULL_SESSION KDE_SESSION_VERSION \
    GNOME_DESKTOP_SESSION_ID GNOME_KEYRING_CONTROL DISPLAY WAYLAND_DISPLAY

wait_for() { # tries, command...
    local n=$1; shift
    for _ in $(seq "$n"); do "$@" && return 0; sleep 0.1; done
    return 1
}

export DBUS_SESSION_BUS_ADDRESS="unix:path=$dir/bus"
if [ "$mode" = no-bus ]; then
    "$@"
    exit $?
fi

dbus-daemon --nofork --config-file="$here/session-bus.conf" --address="$DBUS_SESSION_BUS_ADDRESS" \
    --print-address=1 >"$dir/bus-address" 2>"$dir/bus.log" &
pids+=($!)
wait_for 100 test -s "$dir/bus-address" || { echo "$0: the session bus did not start" >&2; cat "$dir/bus.log" >&2; exit 1; }

if [ "$mode" = keyring ]; then
    # A non-empty password creates the login keyring and makes it the default collection,
    # unlocked; with an empty one the daemon offers only the session collection.
    printf 'throwaway' | gnome-keyring-daemon --foreground --unlock --components=secrets \
        >"$dir/keyring.log" 2>&1 &
    pids+=($!)
    has_keyring() {
        dbus-send --session --print-reply --dest=org.freedesktop.DBus /org/freedesktop/DBus \
            org.freedesktop.DBus.NameHasOwner string:org.freedesktop.secrets 2>/dev/null | grep -q true
    }
    wait_for 100 has_keyring || { echo "$0: gnome-keyring did not start" >&2; cat "$dir/keyring.log" >&2; exit 1; }
fi

"$@"

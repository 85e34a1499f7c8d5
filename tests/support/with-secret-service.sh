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

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/session-common.sh"
session_arguments keyring --no-keyring --no-bus -- "$@"
session_folder sagwerk-session

export XDG_DATA_HOME="$dir/data" XDG_CACHE_HOME="$dir/cache" XDG_RUNTIME_DIR="$dir" SAGWERK_SESSION_DIR="$dir"
mkdir -p "$XDG_DATA_HOME" "$XDG_CACHE_HOME"
# Nothing here may pick a desktop's own wallet instead of the Secret Service.
unset XDG_CURRENT_DESKTOP DESKTOP_SESSION KDE_FULL_SESSION KDE_SESSION_VERSION \
    GNOME_DESKTOP_SESSION_ID GNOME_KEYRING_CONTROL DISPLAY WAYLAND_DISPLAY

export DBUS_SESSION_BUS_ADDRESS="unix:path=$dir/bus"
if [ "$mode" = no-bus ]; then
    "${command[@]}"
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

"${command[@]}"

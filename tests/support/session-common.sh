# Sourced by the with-*.sh wrappers: their command line, and a throw-away folder in
# which everything they start lives and dies.
#
#   session_arguments DEFAULT-MODE OPTION... -- "$@"
#       Sets `mode` to the option given (without its dashes) or DEFAULT-MODE, and
#       `command` to what follows "--"; answers a wrong command line with the usage.
#   session_folder PREFIX
#       Makes `dir` under /tmp, points HOME and XDG_CONFIG_HOME into it, and on the way
#       out stops every process in `pids` and removes the folder.
#   wait_for TRIES COMMAND...
#       Runs COMMAND every tenth of a second until it succeeds, at most TRIES times.

session_arguments() {
    mode=$1
    shift
    local options=()
    while [ "$1" != -- ]; do options+=("$1"); shift; done
    shift
    local usage joined
    joined=$(printf ' | %s' "${options[@]}")
    usage="usage: $0 [${joined:3}] -- CMD [ARG...]"
    local option known
    while [ $# -gt 0 ]; do
        [ "$1" = -- ] && { shift; break; }
        known=
        for option in "${options[@]}"; do [ "$1" = "$option" ] && known=1; done
        [ -n "$known" ] || { echo "$usage" >&2; exit 2; }
        mode=${1#--}
        shift
    done
    [ $# -gt 0 ] || { echo "$usage" >&2; exit 2; }
    command=("$@")
}

session_folder() {
    # A short path under /tmp: socket paths are limited to about 100 bytes.
    dir=$(mktemp -d "/tmp/$1.XXXXXX")
    chmod 700 "$dir"
    pids=()
    trap session_cleanup EXIT
    trap 'exit 129' HUP
    trap 'exit 130' INT
    trap 'exit 143' TERM
    export HOME="$dir/home" XDG_CONFIG_HOME="$dir/config"
    mkdir -p "$HOME" "$XDG_CONFIG_HOME"
}

session_cleanup() {
    local pid
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
    for pid in "${pids[@]}"; do wait "$pid" 2>/dev/null || true; done
    rm -rf "$dir"
}

wait_for() {
    local n=$1
    shift
    for _ in $(seq "$n"); do "$@" && return 0; sleep 0.1; done
    return 1
}

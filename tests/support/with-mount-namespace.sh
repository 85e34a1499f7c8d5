#!/bin/sh
# Runs the command in a mount namespace of its own, where it may mount a small tmpfs:
# as root directly, otherwise (outside a chroot) through a user namespace. In a chroot
# whose root is no mount point the propagation cannot change; the toolbox made its
# mounts private already.
if [ "$(id -u)" = 0 ]; then
    if unshare --mount --propagation private -- true 2>/dev/null; then
        exec unshare --mount --propagation private -- "$@"
    fi
    exec unshare --mount --propagation unchanged -- "$@"
fi
exec unshare --map-root-user --mount -- "$@"

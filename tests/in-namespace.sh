#!/usr/bin/env bash
# in-namespace.sh COMMAND...: runs the command in a network namespace of its own, where the only
# interface is the loopback, so that what it sends and broadcasts reaches nobody. As root directly,
# else through a user namespace. Where the system allows neither: exit status 77, nothing was run.
set -u
inside='ip link set lo up && exec "$@"'
if [ "$(id -u)" -eq 0 ] && unshare --net true 2>/dev/null; then
    exec unshare --net bash -c "$inside" in-namespace "$@"
fi
if unshare --user --map-root-user --net true 2>/dev/null; then
    exec unshare --user --map-root-user --net bash -c "$inside" in-namespace "$@"
fi
echo "skipped: this system allows no network namespace (unshare --net)" >&2
exit 77

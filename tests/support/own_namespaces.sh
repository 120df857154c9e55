#!/bin/sh
# own_namespaces.sh SUBREAPER PROGRAM [ARGS...]: runs a test program in a process and mount
# namespace of its own, under SUBREAPER as its first process, so that tests running side by side
# never see, stop or unmount each other's processes and mounts. Without root there are no such
# namespaces: the program runs as it is, and its tests that need them say that they skip.
reaper=$1
shift
if [ "$(id -u)" = 0 ] && unshare --pid --fork --mount-proc --mount true 2>/dev/null; then
  exec unshare --pid --fork --mount-proc --mount "$reaper" "$@"
fi
exec "$@"

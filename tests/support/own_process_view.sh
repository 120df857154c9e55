#!/bin/sh
# own_process_view.sh PROGRAM [ARGS...]: runs PROGRAM in a process namespace of its own with its
# own /proc, so that pgrep (and the privileged install command) see only the processes the test
# starts, never the Kelvo copies of anything else running on the machine. Where namespaces are
# not available (not root), runs PROGRAM as it is; its tests then say why they skip.
if [ "$(id -u)" = 0 ] && unshare --mount --pid --fork --mount-proc true 2>/dev/null; then
  exec unshare --mount --pid --fork --mount-proc "$@"
fi
exec "$@"

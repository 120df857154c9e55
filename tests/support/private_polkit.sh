#!/bin/sh
# A polkit authority of the test's own, so that pkexec really asks for administrator rights and
# really gets an answer without a person. Run it only in a test's own mount and process namespaces
# (see own_namespaces.sh): it mounts over /run/dbus and /etc/polkit-1/rules.d, and what it starts
# ends with the test.
#
#   private_polkit.sh start USER RESULT
#       a system bus and polkitd, with one rule answering every request of USER with RESULT, a
#       polkit.Result name ("YES", "NO", "AUTH_ADMIN"...); says why not and fails if it cannot
#   private_polkit.sh dismiss PID AGENT
#       starts AGENT (dismissing_polkit_agent) for process PID; fails unless polkit takes it
set -e
owner() {
  dbus-send --system --print-reply --dest=org.freedesktop.DBus /org/freedesktop/DBus \
    org.freedesktop.DBus.NameHasOwner "string:$1" 2>/dev/null | grep -q 'boolean true'
}
case $1 in
start)
  for program in /usr/bin/dbus-daemon /usr/bin/dbus-send /usr/lib/polkit-1/polkitd; do
    [ -x $program ] || { echo "$program is not installed"; exit 1; }
  done
  pkill -x polkitd || true  # the test's previous ones
  pkill -x dbus-daemon || true
  mkdir -p /run/dbus
  mount -t tmpfs -o mode=0755 kelvo-test /run/dbus
  mount -t tmpfs -o mode=0755 kelvo-test /etc/polkit-1/rules.d
  printf 'polkit.addRule(function(action, subject) {\n  if (subject.user == "%s") return polkit.Result.%s;\n});\n' \
    "$2" "$3" >/etc/polkit-1/rules.d/00-kelvo-test.rules
  dbus-daemon --system --fork --nopidfile >/dev/null 2>&1
  /usr/lib/polkit-1/polkitd --no-debug >/dev/null 2>&1 &
  for _ in $(seq 200); do owner org.freedesktop.PolicyKit1 && exit 0; sleep 0.05; done
  echo "polkitd did not start on the private system bus"
  exit 1;;
dismiss)
  registered=$(mktemp -u)
  "$3" "$2" "$registered" >/dev/null 2>&1 &
  for _ in $(seq 200); do [ -e "$registered" ] && rm "$registered" && exit 0; sleep 0.05; done
  exit 1;;
esac

# shellcheck shell=bash disable=SC2154  # the variables it reads are set by the script sourcing it
# What the journeys of tools/macos-e2e.sh share: their verdicts, their setting up and tearing down,
# the stand-in Kelvo's launch record, waiting, and the checks of an install. Sourced by it, which
# sets image, volume, installer_app, installer, built_kelvo, verdicts, evidence and
# KELVO_LAUNCH_RECORD. Written for the bash 3.2 that macOS ships as well as a newer one.

# --- Verdicts: each journey runs in a subshell of its own and ends in exactly one of these ---------

pass() {
  echo "PASSED  journey $journey: $*" | tee -a "$verdicts"
  exit 0
}

skip() {
  echo "SKIPPED journey $journey: $*" | tee -a "$verdicts"
  exit 77
}

fail() {
  capture_screen
  echo "FAILED  journey $journey: $*" | tee -a "$verdicts"
  exit 1
}

# A picture of the screen when a journey fails: an alert or a Gatekeeper dialog that nobody could
# answer is otherwise invisible in a CI log. Only when the caller asked for evidence.
capture_screen() {
  [ -n "$evidence" ] || return 0
  mkdir -p "$evidence"
  local picture
  picture="$evidence/journey-${journey%% *}.png"
  if screencapture -x "$picture" 2>/dev/null; then
    echo "The screen at the failure: $picture"
  else
    echo "The screen could not be captured (screencapture needs the Screen Recording permission)."
  fi
}

# --- Time and waiting -------------------------------------------------------------------------------

# Seconds since the epoch, to the hundredth: macOS's bash 3.2 has no EPOCHREALTIME.
now() { perl -MTime::HiRes=time -e 'printf "%.2f\n", time'; }

seconds_between() { awk -v from="$1" -v to="$2" 'BEGIN { printf "%.1f", to - from }'; }

not_later() { awk -v first="$1" -v second="$2" 'BEGIN { exit !(first <= second) }'; }

running() { kill -0 "$1" 2>/dev/null; }
has_ended() { ! running "$1"; }

# wait_for LIMIT COMMAND...: runs COMMAND every 0.1 s until it succeeds; fails once LIMIT seconds
# have passed by the clock (bash's SECONDS), however slowly a busy machine polls.
wait_for() {
  local deadline=$((SECONDS + $1))
  shift
  until "$@"; do
    [ "$SECONDS" -lt "$deadline" ] || return 1
    sleep 0.1
  done
}

# --- The stand-in Kelvo's launch record (kelvo/launch_record.h) -------------------------------------

field() { tr '\t' '\n' <<<"$1" | sed -n "s/^$2=//p"; }

# Every line recorded for EVENT, and the first one.
recorded() { grep $'\tevent='"$1"$'\t' "$KELVO_LAUNCH_RECORD" 2>/dev/null || true; }
first_recorded() { grep -m1 $'\tevent='"$1"$'\t' "$KELVO_LAUNCH_RECORD" 2>/dev/null || true; }
has_recorded() { [ -n "$(first_recorded "$1")" ]; }

# The start of the Kelvo installed in this journey's destination, if it was started. Matched on the
# journey's own folder name: the same folder may be seen as /var/folders or /private/var/folders.
installed_kelvo_start() {
  local line
  while IFS= read -r line; do
    case "$(field "$line" executable)" in
      */"$(basename "$work")"/Applications/Kelvo.app/Contents/MacOS/Kelvo) echo "$line" && return ;;
    esac
  done < <(recorded started)
}

started_executables() {
  local executables
  executables=$(recorded started | while IFS= read -r line; do field "$line" executable; done | paste -sd, -)
  echo "${executables:-none}"
}

# --- Processes --------------------------------------------------------------------------------------

kelvo_pids() { pgrep -x -u "$(id -u)" Kelvo | paste -sd' ' - || true; }
installer_pids() { pgrep -x -u "$(id -u)" "Install Kelvo" | paste -sd' ' - || true; }
no_kelvo_running() { [ -z "$(kelvo_pids)" ]; }
no_installer_running() { [ -z "$(installer_pids)" ]; }

# Ends a process this journey started, by its number, once sure that the number is still one of
# its Kelvos or installers and not a process that has taken the number since.
end_process() {
  case "$(ps -p "$1" -o command= 2>/dev/null || true)" in
    */Kelvo.app/Contents/MacOS/Kelvo* | *"/Install Kelvo.app/Contents/MacOS/Install Kelvo"*)
      kill -KILL "$1" 2>/dev/null || true ;;
  esac
}

# --- Setting a journey up and tearing it down -------------------------------------------------------

# A fresh folder to install into, an empty launch record, and no Kelvo or installer running: one
# running would be stopped by the installer, and change the journey.
begin_journey() {
  work=$(mktemp -d)
  destination=$work/Applications
  mkdir "$destination"
  rm -f "$KELVO_LAUNCH_RECORD"
  wait_for 5 no_kelvo_running || fail "Kelvo is running already (pid $(kelvo_pids)): the installer would stop it; quit it first"
  wait_for 5 no_installer_running || fail "an installer is running already (pid $(installer_pids)): quit it first"
}

# Leaves nothing of a journey behind: the Kelvos it started, its installer and its own helpers (open,
# osascript), the volume, Gatekeeper's assessments as they were, its files. Runs as the journey's
# subshell exits, however it ends.
end_journey() {
  local line
  while IFS= read -r line; do
    end_process "$(field "$line" pid)"
  done < <(recorded started)
  if [ -n "${installer_pid:-}" ]; then end_process "$installer_pid"; fi
  local helper
  for helper in ${helpers:-}; do kill "$helper" 2>/dev/null || true; done
  if [ -d "$volume" ]; then hdiutil detach -force "$volume" >/dev/null 2>&1 || true; fi
  if [ "${restore_assessments:-false}" = true ]; then
    sudo -n spctl --master-enable || echo "warning: Gatekeeper's assessments could not be turned back on" >&2
  fi
  if [ -n "${work:-}" ]; then rm -rf "$work"; fi
}

# attach IMAGE [HDIUTIL_OPTION...]: attaches the image read-only at $volume.
attach() {
  local attaching=$1
  shift
  [ ! -e "$volume" ] || fail "$volume is mounted already"
  hdiutil attach -readonly "$@" "$attaching" >/dev/null || fail "hdiutil could not attach $attaching"
  [ -x "$installer" ] || fail "the disk image has no $installer"
}

# --- Checks -----------------------------------------------------------------------------------------

# Kelvo is in the destination, complete; it was started from there with --eject-installer-volume
# and the installer's volume, and it ejected that volume.
check_installed_started_and_ejected() {
  [ -f "$destination/Kelvo.app/Contents/Info.plist" ] || fail "Kelvo was not installed in $destination"
  diff -r "$built_kelvo" "$destination/Kelvo.app" || fail "the installed Kelvo.app differs from the one on the disk image"
  local started arguments eject
  started=$(installed_kelvo_start)
  [ -n "$started" ] || fail "the Kelvo installed in $destination was not started (Kelvos started: $(started_executables))"
  arguments=$(field "$started" arg | paste -sd'|' -)
  [ "$arguments" = "--eject-installer-volume|$volume" ] || fail "Kelvo was started with the arguments: $arguments"
  # Kelvo tries for 60 s while the volume is busy; Spotlight can hold a browsable one that long.
  wait_for 75 has_recorded eject || true
  eject=$(first_recorded eject)
  [ "$(field "$eject" outcome)" = ejected ] || fail "the volume was not ejected: ${eject:-no eject recorded within 75 s}"
  [ ! -e "$volume" ] || fail "$volume is still there after Kelvo ejected it"
}

# The items under FOLDER (itself included) that carry com.apple.quarantine, one a line. Symbolic
# links are looked at themselves, never followed: a link may lead out of the bundle.
quarantined_items() {
  local item
  while IFS= read -r -d '' item; do
    if xattr -s -p com.apple.quarantine "$item" >/dev/null 2>&1; then echo "$item"; fi
  done < <(find "$1" -print0)
}

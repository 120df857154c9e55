#!/usr/bin/env bash
# The build takes a Kelvo.app of one's own (KELVO_APP) only when the installer can carry it: its
# Info.plist, XML or binary, must name the installer's bundle identifier and the executable Kelvo.
# Each refusal must say why.
#   bash tests/packaging/bring_your_own_app_test.sh
set -uo pipefail
root="$(cd "$(dirname "$0")/../.." && pwd)"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
identifier=com.getkelvo.Kelvo
failures=0

# bundle NAME FORMAT [IDENTIFIER EXECUTABLE]: a Kelvo.app whose Info.plist is in FORMAT (xml or
# bin), or missing (none), or not a property list (junk).
bundle() {
  local contents=$work/$1/Contents
  mkdir -p "$contents/MacOS"
  touch "$contents/MacOS/Kelvo"
  case "$2" in
    none) ;;
    junk) echo "CFBundleIdentifier = $identifier" >"$contents/Info.plist" ;;
    *)
      printf '<plist version="1.0"><dict><key>%s</key><string>%s</string><key>%s</key><string>%s</string></dict></plist>\n' \
        CFBundleIdentifier "$3" CFBundleExecutable "$4" >"$work/$1.xml"
      plistutil -i "$work/$1.xml" -o "$contents/Info.plist" -f "$2"
      ;;
  esac
}

# expect NAME REFUSAL COMMAND...: COMMAND must fail with REFUSAL in its output, or pass when
# REFUSAL is empty.
expect() {
  local name=$1 refusal=$2 output status
  shift 2
  output=$("$@" 2>&1)
  status=$?
  output=$(tr -s ' \n' '  ' <<<"$output")  # CMake wraps its messages
  if [ -z "$refusal" ] && [ "$status" -eq 0 ]; then return; fi
  if [ -n "$refusal" ] && [ "$status" -ne 0 ] && grep -qF -- "$refusal" <<<"$output"; then return; fi
  echo "FAILED $name: expected ${refusal:-acceptance}, got status $status:"
  echo "$output"
  failures=$((failures + 1))
}

check() { cmake -DKELVO_APP="$work/$1" -DKELVO_BUNDLE_IDENTIFIER="$identifier" -P "$root/cmake/check_app_bundle.cmake"; }

bundle xml-plist xml "$identifier" Kelvo
bundle binary-plist bin "$identifier" Kelvo
bundle other-identifier bin com.example.Other Kelvo
bundle other-executable xml "$identifier" Other
bundle no-plist none
bundle junk-plist junk
expect "XML Info.plist" "" check xml-plist
expect "binary Info.plist" "" check binary-plist
expect "other identifier" "its CFBundleIdentifier is \"com.example.Other\", not the installer's \"$identifier\"" check other-identifier
expect "other executable" "its CFBundleExecutable is \"Other\", not \"Kelvo\"" check other-executable
expect "no Info.plist" "it has no Contents/Info.plist." check no-plist
expect "not a property list" "its Contents/Info.plist is not a property list." check junk-plist
# Configuring the project itself stops there.
expect "configure" "KELVO_APP: $work/other-identifier cannot be the Kelvo.app the installer carries" \
  cmake -S "$root" -B "$work/build" -DKELVO_APP="$work/other-identifier"

echo "$((7 - failures)) passed, $failures failed"
[ "$failures" -eq 0 ]

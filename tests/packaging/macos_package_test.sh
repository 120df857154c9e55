#!/usr/bin/env bash
# The macOS packaging script under recording stand-ins of codesign, ditto, hdiutil, xcrun, spctl,
# security and sleep: in each case, every call it makes, in order and whole, its exit status and
# what it says. A Kelvo.app brought by its team is verified and embedded, never signed again; our
# own code is signed from the inside out, never with --deep; only a real identity signs the image;
# a notary profile has it notarized, stapled and assessed, and a refusal prints the notary's log.
#   bash tests/packaging/macos_package_test.sh
# shellcheck disable=SC2016  # each case's steps are expanded when the case runs
set -uo pipefail
root="$(cd "$(dirname "$0")/../.." && pwd)"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0
cases=0

# One recorder under each tool's name. It logs "tool arguments..." (an argument with a space in
# quotes) and answers as the case sets VERIFY (pass or fail), TEAM, NOTARY (the submission's
# status) and BUSY (hdiutil's first create fails).
mkdir "$work/bin"
cat >"$work/bin/recorder" <<'EOF'
#!/usr/bin/env bash
tool=$(basename "$0")
line=$tool
for arg; do case $arg in *' '*) line+=" '$arg'" ;; *) line+=" $arg" ;; esac; done
echo "$line" >>"$LOG"
case "$tool $1" in
  "codesign --verify")
    [ "$VERIFY" = pass ] || { echo "${!#}: a sealed resource is missing or invalid" >&2; exit 1; } ;;
  "codesign -dv") echo "TeamIdentifier=$TEAM" >&2 ;;
  ditto*) mkdir -p "$(dirname "$2")" && cp -a "$1" "$2" ;;
  "hdiutil create")
    if [ -n "$BUSY" ] && [ ! -e "$LOG.busy" ]; then touch "$LOG.busy"; exit 1; fi
    touch "${!#}" ;;
  "xcrun notarytool")
    if [ "$2" = submit ]; then
      printf '{"id":"4f1c2a","status":"%s","message":"Processing complete"}\n' "$NOTARY"
    else
      echo '{"issues":[{"message":"The signature of the binary is invalid."}]}'
    fi ;;
  "security find-identity")
    echo '  1) 0123456789ABCDEF0123456789ABCDEF01234567 "Developer ID Application: Kelvo Ltd (KELVO12345)"' ;;
esac
EOF
chmod +x "$work/bin/recorder"
for tool in codesign ditto hdiutil xcrun spctl security sleep; do ln -s recorder "$work/bin/$tool"; done

cd "$work" || exit 1
mkdir -p kelvo/Kelvo.app/Contents own/Kelvo.app/Contents "build/Install Kelvo.app"
touch installer Info.plist PkgInfo AppIcon.icns

id='Developer ID Application: Kelvo Ltd (KELVO12345)'
package() { bash "$root/packaging/macos_package.sh" "$@"; }
bundle() {
  package bundle --identity "$1" "$2" "$3" --executable installer --info-plist Info.plist \
    --pkginfo PkgInfo --icon AppIcon.icns 'build/Install Kelvo.app'
}
# A run that succeeds must leave the image.
image() {
  package image --identity "$1" --volume-name 'Install Kelvo' --staging build/volume "${@:2}" \
    'build/Install Kelvo.app' 'build/Install Kelvo.dmg' && [ -e 'build/Install Kelvo.dmg' ]
}

# check NAME STATUS SAYS STEPS [SETTING...] <<<CALLS
# Runs the shell code STEPS with the stand-ins first on PATH and answering as SETTINGs say. It
# must exit with STATUS, print SAYS among its output (nothing at all when SAYS is empty), and make
# exactly CALLS.
check() {
  local name=$1 status=$2 says=$3 steps=$4 actual output
  shift 4
  cases=$((cases + 1))
  sed '/^$/d' >expected
  rm -f calls calls.busy
  output=$(export LOG=$work/calls VERIFY=pass TEAM=KELVO12345 NOTARY=Accepted BUSY='' PATH=$work/bin:$PATH
    for setting; do export "${setting?}"; done
    eval "$steps" 2>&1)
  actual=$?
  touch calls
  if [ "$actual" -ne "$status" ] || { [ -z "$says" ] && [ -n "$output" ]; } ||
    ! grep -qF -- "$says" <<<"$output" || ! cmp -s expected calls; then
    echo "FAILED $name: exit status $actual (expected $status); said (expected ${says:-nothing}):"
    echo "${output:-(nothing)}"
    diff -U 100 --label 'expected calls' --label 'actual calls' expected calls
    failures=$((failures + 1))
  fi
}

assembled="ditto installer 'build/Install Kelvo.app/Contents/MacOS/Install Kelvo'
ditto Info.plist 'build/Install Kelvo.app/Contents/Info.plist'
ditto PkgInfo 'build/Install Kelvo.app/Contents/PkgInfo'
ditto AppIcon.icns 'build/Install Kelvo.app/Contents/Resources/AppIcon.icns'"
verified="codesign --verify --deep --strict --verbose=2"
imaged="ditto 'build/Install Kelvo.app' 'build/volume/Install Kelvo.app'
hdiutil create -fs HFS+ -format UDZO -volname 'Install Kelvo' -srcfolder build/volume 'build/Install Kelvo.dmg'"
signed_image="codesign --force --sign '$id' --timestamp 'build/Install Kelvo.dmg'"
submitted="xcrun notarytool submit 'build/Install Kelvo.dmg' --keychain-profile kelvo-notary --wait --output-format json"

check "stand-in Kelvo, ad hoc: signed inside out, image unsigned" 0 "" \
  'bundle - --stand-in kelvo/Kelvo.app && image -' <<EOF
$assembled
ditto kelvo/Kelvo.app 'build/Install Kelvo.app/Contents/Resources/Kelvo.app'
codesign --force --sign - 'build/Install Kelvo.app/Contents/Resources/Kelvo.app'
codesign --force --sign - 'build/Install Kelvo.app'
$verified 'build/Install Kelvo.app'
$imaged
EOF

check "signed Kelvo.app, Developer ID, no notary profile: embedded untouched" 0 "" \
  'bundle "$id" --kelvo-app own/Kelvo.app && image "$id"' <<EOF
$verified own/Kelvo.app
$assembled
ditto own/Kelvo.app 'build/Install Kelvo.app/Contents/Resources/Kelvo.app'
codesign --force --sign '$id' --options runtime --timestamp 'build/Install Kelvo.app'
$verified 'build/Install Kelvo.app'
$imaged
$signed_image
EOF

check "notary profile: submitted, stapled, assessed" 0 "" 'image "$id" --notary-profile kelvo-notary' <<EOF
$imaged
$signed_image
$submitted
xcrun stapler staple 'build/Install Kelvo.dmg'
spctl --assess --type open --context context:primary-signature -v 'build/Install Kelvo.dmg'
EOF

# Status 2 would mean that the refused image was left behind.
check "refused notarization: fails with the notary's log, no image left" 1 \
  "The signature of the binary is invalid." \
  'image "$id" --notary-profile kelvo-notary || { [ ! -e "build/Install Kelvo.dmg" ] || exit 2; exit 1; }' \
  NOTARY=Invalid <<EOF
$imaged
$signed_image
$submitted
xcrun notarytool log 4f1c2a --keychain-profile kelvo-notary
EOF

check "notary profile with the ad hoc identity: refused" 1 "notarization needs a Developer ID" \
  'image - --notary-profile kelvo-notary' <<<""

check "Kelvo.app whose signature does not verify: refused, saying why" 1 \
  "must carry that team's valid signature" 'bundle "$id" --kelvo-app own/Kelvo.app' VERIFY=fail <<EOF
$verified own/Kelvo.app
EOF

check "hdiutil busy once: tried again" 0 "hdiutil create failed (try 1 of 5)" 'image -' BUSY=1 <<EOF
$imaged
sleep 3
hdiutil create -fs HFS+ -format UDZO -volname 'Install Kelvo' -srcfolder build/volume 'build/Install Kelvo.dmg'
EOF

check "Team ID: another team's Kelvo.app" 0 "is signed by Team ID OTHER12345, but KELVO_SIGNING_IDENTITY" \
  'package check-team --identity "$id" own/Kelvo.app' TEAM=OTHER12345 <<<"codesign -dv --verbose=2 own/Kelvo.app"

check "Team ID: the same team" 0 "" 'package check-team --identity "$id" own/Kelvo.app' \
  <<<"codesign -dv --verbose=2 own/Kelvo.app"

check "Team ID: identity given by its SHA-1 hash, looked up" 0 "belongs to Team ID KELVO12345" \
  'package check-team --identity 0123456789abcdef0123456789abcdef01234567 own/Kelvo.app' TEAM=OTHER12345 <<EOF
codesign -dv --verbose=2 own/Kelvo.app
security find-identity -v -p codesigning
EOF

check "Team ID: ad hoc, not checked" 0 "" 'package check-team --identity - own/Kelvo.app' TEAM=OTHER12345 <<<""

echo "$((cases - failures)) passed, $failures failed"
[ "$failures" -eq 0 ]

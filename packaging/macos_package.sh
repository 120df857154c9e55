#!/usr/bin/env bash
# Assembles and signs "Install Kelvo.app" on macOS, makes its disk image, and has the image
# notarized: every call to codesign, hdiutil, notarytool, stapler and spctl the build makes.
#
#   macos_package.sh bundle --identity ID (--kelvo-app APP | --stand-in APP) --executable FILE \
#                           --info-plist FILE --pkginfo FILE --icon FILE BUNDLE
#     Lays out BUNDLE and signs it from the inside out. A Kelvo.app brought by its team
#     (--kelvo-app) must pass codesign's strict verification and is embedded exactly as it is;
#     only the stand-in (--stand-in) is signed here.
#   macos_package.sh image --identity ID --volume-name NAME --staging DIR [--notary-profile PROFILE] \
#                          BUNDLE IMAGE
#     Makes IMAGE, a compressed HFS+ disk image holding BUNDLE, signs it with a real identity, and
#     with a notarytool keychain PROFILE has it notarized, staples the ticket to it and has
#     Gatekeeper assess it.
#   macos_package.sh check-team --identity ID APP
#     Prints a warning when APP is signed by another team than ID; nothing when ID is ad hoc.
#
# ID is "-" (ad hoc) or a Developer ID Application identity, named or given by its SHA-1 hash.
# macOS runs this with its own bash 3.2: no ${x,,}, no mapfile, no empty arrays under set -u.
set -euo pipefail

fail() {
  echo "macos_package: $*" >&2
  exit 1
}

usage() {
  sed -n '/^#   macos_package.sh/,/^#$/s/^# \{0,1\}//p' "$0" >&2
  exit 2
}

# Stops at the first of the named options that was not given.
require() {
  local name
  for name; do
    [ -n "${!name}" ] || fail "$command: --${name//_/-} is missing"
  done
}

# Our own code: a real identity signs under the hardened runtime and with a secure timestamp, both
# of which notarization requires; an ad hoc signature can have neither.
sign() {
  if [ "$identity" = "-" ]; then
    codesign --force --sign - "$1"
  else
    codesign --force --sign "$identity" --options runtime --timestamp "$1"
  fi
}

# --deep is harmful only when signing; when verifying, it checks every nested piece of code in full.
verify() {
  codesign --verify --deep --strict --verbose=2 "$1"
}

make_bundle() {
  local bundle=$1 kelvo
  require identity executable info_plist pkginfo icon
  if [ -n "$kelvo_app" ] && [ -n "$stand_in" ]; then
    fail "bundle: --kelvo-app and --stand-in exclude each other"
  elif [ -n "$kelvo_app" ]; then
    kelvo=$kelvo_app
    verify "$kelvo" || fail "KELVO_APP $kelvo cannot be embedded: its signature does not pass" \
      "'codesign --verify --deep --strict' (codesign says why, above). The installer carries" \
      "Kelvo.app exactly as Kelvo's team signed it and never signs it again, so it must carry that" \
      "team's valid signature: bring a copy as the team signed (and notarized) it."
  else
    require stand_in
    kelvo=$stand_in
  fi

  rm -rf "$bundle"
  mkdir -p "$bundle/Contents/MacOS" "$bundle/Contents/Resources"
  ditto "$executable" "$bundle/Contents/MacOS/Install Kelvo"
  ditto "$info_plist" "$bundle/Contents/Info.plist"
  ditto "$pkginfo" "$bundle/Contents/PkgInfo"
  ditto "$icon" "$bundle/Contents/Resources/AppIcon.icns"
  # ditto keeps a signature whole, down to the parts codesign keeps in extended attributes.
  ditto "$kelvo" "$bundle/Contents/Resources/Kelvo.app"

  # Inside out and never --deep, which would replace a brought Kelvo.app's signature, Team ID,
  # requirements and flags with ours (and does not look in Contents/Resources anyway): the nested
  # code first, when it is ours, then the bundle, whose signature seals what it holds.
  if [ -z "$kelvo_app" ]; then
    sign "$bundle/Contents/Resources/Kelvo.app"
  fi
  sign "$bundle"
  verify "$bundle"
}

# hdiutil now and then finds its disk busy for a moment (on CI machines most of all), so it is
# given five tries.
create_image() {
  local image=$1 attempt
  for attempt in 1 2 3 4 5; do
    rm -f "$image"
    if hdiutil create -fs HFS+ -format UDZO -volname "$volume_name" -srcfolder "$staging" "$image"; then
      return 0
    fi
    [ "$attempt" -lt 5 ] || fail "hdiutil create failed 5 times; no disk image made"
    echo "macos_package: hdiutil create failed (try $attempt of 5)" >&2
    sleep 3
  done
}

# The value of a string field of notarytool's one-line JSON answer.
json_string() {
  printf '%s\n' "$2" | sed -n "s/.*\"$1\" *: *\"\\([^\"]*\\)\".*/\\1/p"
}

# notarytool submit --wait exits with 0 whenever the service gave a verdict, "Invalid" included:
# only the status in its answer tells an accepted image from a refused one.
notarize() {
  local image=$1 answer exit_status=0 status id
  answer=$(xcrun notarytool submit "$image" --keychain-profile "$notary_profile" --wait \
    --output-format json) || exit_status=$?
  status=$(json_string status "$answer")
  id=$(json_string id "$answer")
  if [ "$exit_status" -ne 0 ] || [ "$status" != Accepted ]; then
    printf '%s\n' "$answer" >&2
    if [ -n "$id" ]; then
      echo "macos_package: the notary service's log of submission $id:" >&2
      xcrun notarytool log "$id" --keychain-profile "$notary_profile" >&2 || true
    fi
    fail "$image was not notarized (notarytool status ${status:-none}, exit status $exit_status)"
  fi
  xcrun stapler staple "$image"
  spctl --assess --type open --context context:primary-signature -v "$image"
}

make_image() {
  local bundle=$1 image=$2
  require identity volume_name staging
  if [ -n "$notary_profile" ] && [ "$identity" = "-" ]; then
    fail "image: notarization needs a Developer ID Application identity, not - (ad hoc)"
  fi
  # A step that fails leaves no image that the build could take for a finished one.
  unfinished_image=$image

  rm -rf "$staging"
  mkdir -p "$staging"
  ditto "$bundle" "$staging/$(basename "$bundle")"
  create_image "$image"
  # An ad hoc signature on the image would tell Gatekeeper nothing, so only a real identity signs it.
  if [ "$identity" != "-" ]; then
    codesign --force --sign "$identity" --timestamp "$image"
  fi
  if [ -n "$notary_profile" ]; then
    notarize "$image"
  fi
  unfinished_image=
}

# The Team ID at the end of the identity's name, "Developer ID Application: Name (TEAMID)". A hash,
# or a part of the name, is looked up among the keychain's signing identities first.
identity_team() {
  local name=$identity found team='\(([A-Z0-9]+)\)$'
  if ! [[ $name =~ $team ]]; then
    found=$(security find-identity -v -p codesigning | grep -iF -- "$identity") || true
    name=$(printf '%s\n' "$found" | sed -n 's/^[^"]*"\(.*\)"[^"]*$/\1/p')
    name=${name%%$'\n'*}
  fi
  if [[ $name =~ $team ]]; then
    echo "${BASH_REMATCH[1]}"
  fi
}

# App Management (macOS 13 and later) stops an app of one team from replacing another team's app,
# so the installer is meant to carry the Team ID of the Kelvo it replaces.
check_team() {
  local app=$1 details app_team our_team
  require identity
  [ "$identity" != "-" ] || return 0
  details=$(codesign -dv --verbose=2 "$app" 2>&1) || true
  app_team=$(printf '%s\n' "$details" | sed -n 's/^TeamIdentifier=//p')
  our_team=$(identity_team)
  if [ -z "$our_team" ]; then
    echo "Cannot tell the Team ID of KELVO_SIGNING_IDENTITY \"$identity\" (no such signing identity" \
      "in 'security find-identity -v -p codesigning'), so whether it matches KELVO_APP's was not checked."
  elif [ "$app_team" != "$our_team" ]; then
    case $app_team in
      '' | 'not set') app_team="has no Team ID (it is signed ad hoc or not at all)" ;;
      *) app_team="is signed by Team ID $app_team" ;;
    esac
    echo "KELVO_APP $app $app_team, but KELVO_SIGNING_IDENTITY \"$identity\"" \
      "belongs to Team ID $our_team. macOS 13 and later stop an app of one team from replacing" \
      "another team's app (App Management), so this installer may be stopped when it replaces an" \
      "installed Kelvo: sign the installer with Kelvo's own team."
  fi
}

command=${1:-}
[ $# -eq 0 ] || shift
identity="" kelvo_app="" stand_in="" executable="" info_plist="" pkginfo="" icon=""
volume_name="" staging="" notary_profile="" unfinished_image=""
while [ $# -gt 0 ]; do
  case $1 in
    --identity | --kelvo-app | --stand-in | --executable | --info-plist | --pkginfo | --icon | \
      --volume-name | --staging | --notary-profile)
      [ $# -ge 2 ] || fail "$1 needs a value"
      name=${1#--}
      printf -v "${name//-/_}" '%s' "$2"
      shift 2
      ;;
    --*) fail "unknown option $1" ;;
    *) break ;;
  esac
done
trap '[ -z "$unfinished_image" ] || rm -f "$unfinished_image"' EXIT

case "$command $#" in
  "bundle 1") make_bundle "$1" ;;
  "image 2") make_image "$1" "$2" ;;
  "check-team 1") check_team "$1" ;;
  *) usage ;;
esac

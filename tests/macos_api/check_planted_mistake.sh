#!/usr/bin/env bash
# Runs the macOS source check on planted_mistakes.mm with MISTAKE=N. N=0 is correct code and must
# pass; any other N must fail, with the error its `#if MISTAKE == N  // expect: …` line names, so that
# a mistake rejected for some unrelated reason, or only warned about, does not count.
#   bash tests/macos_api/check_planted_mistake.sh N
set -uo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
source_file="$here/planted_mistakes.mm"
number="$1"

output="$(bash "$here/../../tools/check_macos_sources.sh" "-DMISTAKE=$number" "$source_file" 2>&1)"
status=$?
if [ "$number" = 0 ]; then
  echo "$output"
  exit "$status"
fi
expected="$(sed -nE "s/^#(el)?if MISTAKE == $number  \/\/ expect: //p" "$source_file")"
if [ -z "$expected" ]; then
  echo "There is no mistake $number in $source_file."
  exit 1
fi
if [ "$status" -ne 0 ] && grep -F -- "error: " <<<"$output" | grep -qF -- "$expected"; then
  echo "Mistake $number rejected: $expected"
  exit 0
fi
echo "Mistake $number was not rejected with: $expected"
echo "$output"
exit 1

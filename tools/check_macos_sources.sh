#!/usr/bin/env bash
# Syntax-checks Objective-C++ sources as the macOS build compiles them (ARC, blocks, every warning an
# error) against our own declarations of the macOS 12 API in tools/macos-api.
#   bash tools/check_macos_sources.sh [-DNAME[=VALUE] | -IFOLDER ...] [FILE.mm ...]
# Without files it checks every .mm under installer/ and kelvo/. Prints one line per file, then the
# compiler's diagnostics for each file that fails. Exits 1 when any file fails, and 77 when there is
# no file to check at all, so that it never passes on nothing.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"

flags=(
  -x objective-c++ -std=c++20 -fsyntax-only
  -fobjc-arc -fblocks -fobjc-runtime=macosx-12.0 -fobjc-weak
  -Wall -Wextra -Werror -Wnullable-to-nonnull-conversion -Wundeclared-selector
  -isystem "$root/tools/macos-api" -I "$root/installer"
)
files=()
for argument in "$@"; do
  case "$argument" in
    -D* | -I*) flags+=("$argument") ;;
    *) files+=("$argument") ;;
  esac
done
if [ "${#files[@]}" -eq 0 ]; then
  mapfile -t files < <(cd "$root" && find installer kelvo -name '*.mm' 2>/dev/null | sort)
  cd "$root"
fi
if [ "${#files[@]}" -eq 0 ]; then
  echo "No Objective-C++ source (*.mm) under installer/ or kelvo/ to check."
  exit 77
fi

failed=0
for file in "${files[@]}"; do
  if diagnostics="$(clang++ "${flags[@]}" "$file" 2>&1)"; then
    echo "ok      $file"
  else
    echo "FAILED  $file"
    echo "$diagnostics"
    failed=1
  fi
done
exit "$failed"

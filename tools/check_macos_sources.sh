#!/usr/bin/env bash
# Syntax-checks Objective-C++ sources as the macOS build compiles them (for an Intel Mac with macOS 12
# as the oldest system: ARC, blocks, availability, every warning an error) against our own
# declarations of the macOS 12 API in tools/macos-api. The C and C++ standard libraries are this
# machine's (glibc's and libstdc++'s) headers, which need only to declare the same functions.
#   bash tools/check_macos_sources.sh [-DNAME[=VALUE] | -IFOLDER ...] [FILE.mm ...]
#   bash tools/check_macos_sources.sh --print-flags [-DNAME[=VALUE] | -IFOLDER ...]
# Without files it checks every .mm under installer/ and kelvo/. Prints one line per file, then the
# compiler's diagnostics for each file that fails. Exits 1 when any file fails, or when there is no
# file to check at all, so that it never passes on nothing. With --print-flags it checks nothing and
# prints the compiler's flags, one a line, for tools that must read the sources exactly as checked
# (tests/macos_api/backend_calls.py).
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"

# Where clang looks for the standard headers when it compiles for this machine, in that order.
mapfile -t standard_headers < <(clang++ -x c++ -E -v - </dev/null 2>&1 |
  sed -n '/^#include <...> search starts here:/,/^End of search list/{s/^ //p}')
flags=(
  -target x86_64-apple-macos12 -x objective-c++ -std=c++20 -fsyntax-only
  -fobjc-arc -fblocks -fobjc-weak
  -Wall -Wextra -Werror -Wnullable-to-nonnull-conversion -Wundeclared-selector -Wunguarded-availability
  # glibc names an attribute macro of its own __nonnull, a nullability keyword on Apple's targets;
  # libstdc++ needs the GNU extensions that clang turns on only for Linux targets.
  -U__nonnull -U__nullable -U__null_unspecified -D_GNU_SOURCE
  -nostdinc -nostdinc++ -isystem "$root/tools/macos-api"
)
for folder in "${standard_headers[@]}"; do flags+=(-isystem "$folder"); done
flags+=(-I "$root/installer")
files=()
print_flags=0
for argument in "$@"; do
  case "$argument" in
    --print-flags) print_flags=1 ;;
    -D* | -I*) flags+=("$argument") ;;
    *) files+=("$argument") ;;
  esac
done
if [ "$print_flags" -eq 1 ]; then
  printf '%s\n' "${flags[@]}"
  exit 0
fi
if [ "${#files[@]}" -eq 0 ]; then
  mapfile -t files < <(cd "$root" && find installer kelvo -name '*.mm' 2>/dev/null | sort)
  cd "$root"
fi
if [ "${#files[@]}" -eq 0 ]; then
  echo "FAILED: no Objective-C++ source (*.mm) under installer/ or kelvo/: the macOS backend is missing."
  exit 1
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

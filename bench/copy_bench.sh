#!/usr/bin/env bash
# The installer's plain copy of a large bundle, side by side with cp -a and rsync -a.
#   bash bench/copy_bench.sh [RUNS]      (root; after a build: cmake --build build --target copy_bench)
#
# The bundle (about 400 MB in about 12,000 files) is generated once and kept as a squashfs image
# under build/bench/, which is loop-mounted read-only in a private mount namespace, as a disk
# image is. Each tool copies it to the root file system RUNS times (default 3), the page cache
# dropped before every run; the medians, the ratios to rsync -a and the installer copy's peak
# memory are printed.
set -euo pipefail
cd "$(dirname "$0")/.."
runs="${1:-3}"
bench=build/bench/copy_bench
work="$PWD/build/bench/work"
image="$PWD/build/bench/kelvo-bundle.squashfs"

if [ "$(id -u)" -ne 0 ]; then echo "copy_bench: needs root (loop mount, dropping caches)" >&2; exit 1; fi
if [ ! -x "$bench" ]; then echo "copy_bench: build it first (cmake --build build --target copy_bench)" >&2; exit 1; fi

if [ ! -f "$image" ]; then
  rm -rf "$work/tree" && mkdir -p "$work/tree"
  echo "Generating the bundle: $("$bench" generate "$work/tree")"
  mksquashfs "$work/tree" "$image" -quiet -no-progress -all-root >/dev/null
  rm -rf "$work/tree"
fi

# The rest runs in a mount namespace of its own, so the image's mount goes away with it.
exec unshare --mount --propagation private bash -s "$runs" "$bench" "$work" "$image" <<'INNER'
set -euo pipefail
runs="$1" bench="$2" work="$3" image="$4"
mkdir -p "$work/mnt"
mount -o loop,ro -t squashfs "$image" "$work/mnt"
source="$work/mnt/Kelvo.app"
destination="$work/Kelvo.app"

median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

declare -A seconds memory
tools=(installer "cp -a" "rsync -a")
for ((run = 1; run <= runs; run++)); do
  for tool in "${tools[@]}"; do
    rm -rf "$destination"
    sync
    echo 3 > /proc/sys/vm/drop_caches
    case "$tool" in
      installer) result=$("$bench" measure "$bench" copy "$source" "$destination") ;;
      "cp -a") result=$("$bench" measure cp -a "$source" "$destination") ;;
      "rsync -a") result=$("$bench" measure rsync -a "$source/" "$destination/") ;;
    esac
    seconds[$tool]+="${result% *}"$'\n'
    memory[$tool]+="${result#* }"$'\n'
  done
done
rm -rf "$destination"

files=$(find "$source" -type f | wc -l)
megabytes=$(du -sm --apparent-size "$source" | cut -f1)
echo "Copying $files files, $megabytes MB, from a loop-mounted squashfs image; median of $runs runs, caches dropped:"
rsync_median=$(printf '%s' "${seconds[rsync -a]}" | median)
for tool in "${tools[@]}"; do
  s=$(printf '%s' "${seconds[$tool]}" | median)
  m=$(printf '%s' "${memory[$tool]}" | sort -n | tail -1)
  awk -v tool="$tool" -v s="$s" -v r="$rsync_median" -v m="$m" \
    'BEGIN { printf "  %-9s %7.2f s   %5.2fx of rsync -a   peak memory %6.1f MB\n", tool, s, s / r, m / 1024 }'
done
umount "$work/mnt"
INNER

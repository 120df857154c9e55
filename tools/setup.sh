# shellcheck shell=bash
# What the test command and the demo share: the Debian packages they need, and the build.
# Sourced by tools/test.sh and tools/demo.sh, from the repository's top folder.

KELVO_PACKAGES=(
  build-essential cmake pkg-config
  libgtest-dev libgmock-dev libbenchmark-dev
  qt6-base-dev libplist-dev
  procps util-linux mount
  xvfb xauth x11-apps x11-utils xdotool imagemagick fonts-dejavu-core libxcb1-dev libx11-dev
  squashfs-tools rsync time
  dbus polkitd pkexec
  libplist-utils python3 python3-yaml clang shellcheck
)

# Installs whichever of KELVO_PACKAGES is missing; does nothing (and needs no network) when all
# are there already.
ensure_packages() {
  local missing=()
  local package
  for package in "${KELVO_PACKAGES[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' \
      || missing+=("$package")
  done
  [ "${#missing[@]}" -eq 0 ] && return 0
  echo "Installing: ${missing[*]}"
  if [ "$(id -u)" -ne 0 ]; then
    echo "error: these packages are missing and installing them needs root: ${missing[*]}" >&2
    return 1
  fi
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# Installs missing packages, configures and builds TARGETS (everything when none is named) in
# build/, and puts the project's ditto at /usr/bin/ditto, which the privileged fallback runs.
prepare_build() {
  ensure_packages
  cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
  if [ "$#" -gt 0 ]; then
    cmake --build build -j"$(nproc)" --target "$@" ditto
  else
    cmake --build build -j"$(nproc)"
  fi
  bash tools/install-ditto.sh build
}

# The Debian packages the build, the tests and the demo need, and how to get them.
# Sourced by tools/test.sh and tools/demo.sh.

KELVO_PACKAGES=(
  build-essential cmake pkg-config
  libgtest-dev libgmock-dev libbenchmark-dev
  qt6-base-dev libplist-dev
  procps util-linux mount
  xvfb xauth x11-apps x11-utils xdotool imagemagick fonts-dejavu-core libxcb1-dev libx11-dev
  squashfs-tools rsync time
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

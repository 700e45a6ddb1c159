# shellcheck shell=bash
# Functions that the scripts share. Sourced, never run.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

# One compiler cache serves all checkouts.
export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1

# The one list of Debian packages, by purpose.
build_packages=(g++ cmake ninja-build libcli11-dev nlohmann-json3-dev)
# The tests alone need the private headers of Qt, and a Wayland session alone qt6-wayland.
desktop_packages=(qt6-base-dev qt6-base-private-dev qt6-multimedia-dev qt6-translations-l10n
                  qt6-wayland librsvg2-bin)
package_packages=(dpkg-dev file)
package_check_packages=(lintian desktop-file-utils appstream)
clean_root_packages=(debootstrap xvfb openbox xdotool xclip x11-utils poppler-utils iproute2 python3)
test_packages=(libgtest-dev libgmock-dev libbenchmark-dev xvfb openbox xdotool xclip imagemagick
               x11-utils iproute2 python3 poppler-utils fonts-dejavu-core ccache)
sanitizer_packages=(clang libclang-rt-14-dev ccache)
check_packages=(clang-format clang-tidy)
bench_packages=(socat valgrind)

say() { printf '%s: %s\n' "$(basename "$0")" "$*" >&2; }

fail() {
  say "$*"
  exit 1
}

as_root() {
  if [[ $EUID -eq 0 ]]; then
    "$@"
  else
    sudo "$@"
  fi
}

# Prints those of the named packages that are not installed.
missing_packages() {
  local -A present=()
  local package status
  while read -r package status; do
    if [[ $status == installed ]]; then present[$package]=1; fi
  done < <(dpkg-query -W -f='${Package} ${db:Status-Status}\n' "$@" 2>/dev/null || true)
  for package in "$@"; do
    if [[ -z ${present[$package]:-} ]]; then printf '%s\n' "$package"; fi
  done
}

# Without the administrator's rights nothing is installed, and without a compiler, CMake and Ninja
# nothing is built.
go_on_without() {
  say "packages are missing; ask an administrator of this computer for: apt-get install $*"
  local tool
  for tool in cmake ninja c++; do
    if ! command -v "$tool" >/dev/null; then fail "nothing can be built without $tool"; fi
  done
  say "going on without them"
}

# install_packages PACKAGE...: installs the missing packages, and goes on without them where the
# tools of every build are here nevertheless.
install_packages() {
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    say "packages are installed on Debian only; this needs the equivalents of: $*"
    return
  fi
  local -a missing
  mapfile -t missing < <(missing_packages "$@")
  if [[ ${#missing[@]} -eq 0 ]]; then return; fi
  if [[ $EUID -ne 0 ]] && ! command -v sudo >/dev/null; then
    go_on_without "${missing[@]}"
    return
  fi
  say "installing ${missing[*]}"
  local -a apt=(env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300)
  if ! as_root "${apt[@]}" update >&2 ||
     ! as_root "${apt[@]}" install -y --no-install-recommends "${missing[@]}" >&2; then
    go_on_without "${missing[@]}"
  fi
}

# configure PRESET ON|OFF: configures once; again only to switch the tests on.
configure() {
  local preset=$1 tests=$2
  local cache=build/$preset/CMakeCache.txt
  if [[ -f build/$preset/build.ninja ]]; then
    if [[ $tests == OFF ]] || grep -q '^QUORVEL_TESTS:BOOL=ON$' "$cache"; then return; fi
  fi
  cmake --preset "$preset" -DQUORVEL_TESTS="$tests"
}

# build PRESET [TARGET...]: on all cores.
build() {
  local preset=$1
  shift
  cmake --build "build/$preset" --parallel "$(nproc)" ${1:+--target "$@"}
}

# A network of its own: loopback, and an interface for multicast whose other end leads nowhere.
private_network='
  ip link set lo up
  ip link add v0 type veth peer name v1
  ip addr add 10.77.0.1/24 dev v0
  ip link set v0 up
  ip link set v1 up
  ip route add default dev v0
  exec "$@"'

# in_private_network COMMAND...: so that nothing that the command sends reaches the real network,
# and no host there disturbs it. Where the system does not allow that, the command runs as it
# would have, without QUORVEL_PRIVATE_NETWORK.
in_private_network() {
  local -a enter=(unshare -n)
  if [[ $EUID -ne 0 ]]; then enter=(unshare -rn); fi
  enter+=(bash -euc "$private_network" private_network)
  if "${enter[@]}" true 2>/dev/null; then
    QUORVEL_PRIVATE_NETWORK=1 "${enter[@]}" "$@"
  else
    say "no private network can be made here; the tests keep to the loopback interface"
    env -u QUORVEL_PRIVATE_NETWORK "$@"
  fi
}

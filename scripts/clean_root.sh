#!/usr/bin/env bash
# Installs the package in a fresh Debian 12 that has nothing else, runs the program there as an
# ordinary user, and upgrades and removes the package. Needs root, and 2 GB of memory for the fresh
# system; the base system and the downloaded packages stay in a cache folder.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

if [[ $EUID -ne 0 ]]; then fail "making a Debian system in a folder needs root: run this with sudo"; fi
cache=${QUORVEL_CLEAN_ROOT_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/quorvel/clean-root}

# The fresh system is in memory, in a mount namespace of a second run of this script, and goes with
# that run. No folder of this computer is mounted into the system, and nothing is removed by its
# folder: a removal could reach through a mount.
if [[ -z ${QUORVEL_CLEAN_ROOT_WORK:-} ]]; then
  unshare -m true 2>/dev/null || fail "this system does not allow mounts of one's own"
  install_packages "${clean_root_packages[@]}"
  work=$(mktemp -d)
  trap 'rmdir "$work"' EXIT
  QUORVEL_CLEAN_ROOT_WORK=$work unshare -m bash "${BASH_SOURCE[0]}" "$@"
  exit
fi

work=$QUORVEL_CLEAN_ROOT_WORK
if [[ $(readlink /proc/self/ns/mnt) == "$(readlink "/proc/$PPID/ns/mnt")" ]]; then
  fail "QUORVEL_CLEAN_ROOT_WORK is for the second run of this script alone"
fi
mount -t tmpfs -o mode=755,size=3g tmpfs "$work"
clean=$work/root
readonly user=1000

# The Debian from which this computer has its packages.
mirror() {
  local found
  found=$(grep -rhoE 'https?://[^ ]*/debian/?( |$)' /etc/apt/sources.list /etc/apt/sources.list.d \
    2>/dev/null | head -n 1 || true)
  printf '%s\n' "${found:-http://deb.debian.org/debian}"
}

make_root() {
  mkdir -p "$cache/archives" "$clean"
  if [[ ! -f $cache/base.tar ]]; then
    say "making a Debian 12 in $cache"
    debootstrap --variant=minbase bookworm "$clean" "$(mirror)" >&2
    tar -C "$clean" -cf "$cache/base.tar.new" .
    mv "$cache/base.tar.new" "$cache/base.tar"
  else
    tar -C "$clean" -xf "$cache/base.tar"
  fi
  mount -t proc proc "$clean/proc"
  cp /etc/resolv.conf "$clean/etc/resolv.conf"
  find "$cache/archives" -name '*.deb' -exec cp -t "$clean/var/cache/apt/archives" {} +
  in_root useradd --create-home --uid "$user" somebody
  in_root apt-get -q update >&2
}

in_root() {
  chroot "$clean" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive \
    LC_ALL=C.UTF-8 "$@"
}

# apt_in_root ARGUMENT...: prints how the package stands afterwards, and APT's own words on failure.
apt_in_root() {
  in_root apt-get -q -y --no-install-recommends -o APT::Keep-Downloaded-Packages=true "$@" \
    >"$work/apt.log" 2>&1 || { tail -n 30 "$work/apt.log" >&2; fail "apt-get $* failed"; }
  say "after $1: $(in_root dpkg-query -W -f='${Package} ${Version} ${db:Status-Status}' quorvel \
    2>/dev/null || echo 'no trace of the package')"
}

# The programs of this folder run their namesakes in the root as an ordinary user, with the caller's
# screen. Their caller's home folder lies in the root; the user's own gets a copy of the documents.
make_doors() {
  mkdir "$work/doors"
  local name
  for name in quorvel quorvel-send; do
    cat >"$work/doors/$name" <<END
#!/bin/sh
set -eu
case \$HOME in
  $clean/tmp/quorvel-*) ;;
  *) echo "the home folder \$HOME is not in the fresh system" >&2; exit 1 ;;
esac
home=\${HOME#$clean}
chroot "$clean" chown -R $user:$user "\$home"
chroot "$clean" cp -a "\$home/Documents" /home/somebody/
exec chroot --userspec=$user:$user "$clean" env -i PATH=/usr/bin:/bin LC_ALL=C.UTF-8 HOME="\$home" \
  DISPLAY="\$DISPLAY" XDG_RUNTIME_DIR="\$home" QT_QPA_PLATFORM=xcb /usr/bin/$name "\$@"
END
    chmod +x "$work/doors/$name"
  done
}

# The window opens, the program takes a key, hears what quorvel-send sends, prints and ends.
run_program() {
  TMPDIR=$clean/tmp in_private_network python3 tests/smoke_test.py "$work/doors" ||
    fail "the program of revision $1 does not run in the fresh system"
  say "the program of revision $1 starts, hears quorvel-send and ends"
}

saved_files() {
  (cd "$clean/home/somebody" && find . -type f -exec sha256sum {} + | sort)
}

expect_saved_files() {
  if [[ $(saved_files) != "$saved" ]]; then fail "the user's files changed: $1"; fi
  say "the user's files are as they were: $1"
}

make_root
make_doors
for revision in 1 2; do
  package=$(bash scripts/package.sh "$revision")
  cp "$package" "$clean/root/$revision.deb"
done

apt_in_root install /root/1.deb
find "$clean/var/cache/apt/archives" -name '*.deb' -exec cp -n -t "$cache/archives" {} +
mapfile -t installed < <(in_root dpkg -L quorvel)
run_program 1
key_file=$clean/home/somebody/Documents/Quorvel/QuorvelKeyFile
if [[ $(<"$key_file") != $'1.0.5\nMaple-Room-7' ]]; then fail "the program saved another key"; fi
saved=$(saved_files)

apt_in_root install /root/2.deb
expect_saved_files "after the upgrade"
run_program 2
saved=$(saved_files)
apt_in_root remove quorvel
expect_saved_files "after the removal"
apt_in_root install /root/2.deb
apt_in_root purge quorvel
expect_saved_files "after the purge"
for file in "${installed[@]}"; do
  if [[ -f $clean$file ]]; then fail "the purge left $file"; fi
done
say "the package installs, runs, upgrades and goes, in $SECONDS s"

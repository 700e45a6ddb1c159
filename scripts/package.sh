#!/usr/bin/env bash
# Builds the Debian package and prints the package's path: package.sh [REVISION]
# The revision is that of packaging/changelog unless given.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

install_packages "${build_packages[@]}" "${desktop_packages[@]}" "${package_packages[@]}"

# The time that the files in the package bear: that of the last commit, or in a tree without git
# that of the changelog.
export SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null ||
  dpkg-parsechangelog --file packaging/changelog --show-field Timestamp)}

# The package's files and archive have the same permissions, whoever builds the package.
umask 022
configure release OFF >&2
build release installed_files >&2
(
  cd build/release
  rm -rf package
  cpack ${1:+-D "CPACK_DEBIAN_PACKAGE_RELEASE=$1"} >&2
)
printf '%s\n' "$root"/build/release/package/*.deb

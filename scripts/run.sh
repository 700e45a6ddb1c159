#!/usr/bin/env bash
# Builds Quorvel and its companions for the command line, and starts Quorvel.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

install_packages "${build_packages[@]}" "${desktop_packages[@]}"
configure release OFF
build release quorvel quorvel-send quorvel-check

if [[ $(uname) != Darwin && -z ${DISPLAY:-} && -z ${WAYLAND_DISPLAY:-} ]]; then
  fail "Quorvel is built, but there is no display to show its window on:" \
       "run this from a desktop session, or set DISPLAY to an X server that is running."
fi
exec build/release/bin/quorvel "$@"

#!/usr/bin/env bash
# Formats the C++ sources; with --check changes nothing and fails on what it would change.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

mode=(-i)
case ${1:-} in
  '') ;;
  --check) mode=(--dry-run -Werror) ;;
  *) fail "usage: format.sh [--check]" ;;
esac

install_packages clang-format
find src tools tests bench fuzz \( -name '*.cpp' -o -name '*.h' \) -print0 |
  xargs -0 -r -n 16 -P "$(nproc)" clang-format "${mode[@]}"

#!/usr/bin/env bash
# Builds a preset and runs its tests: test.sh [PRESET] [CTEST-OPTION...]
# The preset is release unless QUORVEL_PRESET or the first argument names another.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

preset=${QUORVEL_PRESET:-release}
if [[ $# -gt 0 && $1 != -* ]]; then
  preset=$1
  shift
fi

packages=("${build_packages[@]}" "${test_packages[@]}")
if [[ $preset != headless ]]; then packages+=("${desktop_packages[@]}"); fi
install_packages "${packages[@]}"

# The build runs the test programs too, to ask them for their tests.
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1}
if [[ -f tests/lsan.supp ]]; then
  export LSAN_OPTIONS=${LSAN_OPTIONS:-suppressions=$root/tests/lsan.supp:print_suppressions=0}
fi

configure "$preset" ON
build "$preset"
in_private_network ctest --test-dir "build/$preset" --output-on-failure --no-tests=error "$@"

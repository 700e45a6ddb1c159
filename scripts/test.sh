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

# The thread sanitizer finds no room for its tables where the kernel scatters a program's memory.
if [[ $preset == tsan && -z ${QUORVEL_FIXED_ADDRESSES:-} ]] && setarch -R true 2>/dev/null; then
  QUORVEL_FIXED_ADDRESSES=1 exec setarch -R bash "${BASH_SOURCE[0]}" "$preset" "$@"
fi

packages=("${build_packages[@]}" "${test_packages[@]}")
if [[ $preset == asan || $preset == tsan ]]; then packages+=("${sanitizer_packages[@]}"); fi
if [[ $preset != headless && $preset != tsan ]]; then packages+=("${desktop_packages[@]}"); fi
install_packages "${packages[@]}"

# The build runs the test programs too, to ask them for their tests.
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1}
if [[ -f tests/lsan.supp ]]; then
  export LSAN_OPTIONS=${LSAN_OPTIONS:-suppressions=$root/tests/lsan.supp:print_suppressions=0}
fi

configure "$preset" ON
build "$preset"
in_private_network ctest --test-dir "build/$preset" --output-on-failure --no-tests=error "$@"

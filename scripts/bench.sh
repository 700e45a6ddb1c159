#!/usr/bin/env bash
# Measures the program side by side with other receivers, and writes the figures to
# docs/performance.md and docs/images/frames.svg: bench.sh [--rounds N] [--seconds N] [--lines N]. Five rounds with loads of
# five seconds unless told otherwise, some 15 minutes; nothing else should run meanwhile.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

install_packages "${build_packages[@]}" "${desktop_packages[@]}" "${test_packages[@]}" \
                 "${bench_packages[@]}"
configure release ON
build release
in_private_network python3 scripts/bench.py build/release/bin --page docs/performance.md "$@"
python3 scripts/frame_plot.py build/release/bin docs/images/frames.svg

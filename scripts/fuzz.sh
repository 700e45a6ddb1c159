#!/usr/bin/env bash
# Builds the fuzz targets and lets each make up inputs for a while: fuzz.sh [SECONDS], 30 unless
# named. Fails at the first target that finds a fault, and leaves the input in build/fuzz/faults.
# Inputs that reach new code are kept in build/fuzz/corpus, from where a later run goes on.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

seconds=${1:-30}
if [[ ! $seconds =~ ^[1-9][0-9]*$ ]]; then fail "usage: fuzz.sh [SECONDS]"; fi

install_packages "${build_packages[@]}" "${sanitizer_packages[@]}"
targets=()
for source in fuzz/*_fuzz.cpp; do targets+=("$(basename "$source" .cpp)"); done
configure fuzz OFF
build fuzz "${targets[@]}"

export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1}

# fuzz TARGET: runs one target and prints what the target did.
fuzz() {
  local name=${1%_fuzz}
  local log=build/fuzz/$name.log
  mkdir -p "build/fuzz/corpus/$name" build/fuzz/faults
  say "$name, for $seconds s; the log is $log"
  if ! build/fuzz/bin/"$1" -fork=0 -max_total_time="$seconds" -max_len=64 -timeout=10 \
         -print_final_stats=1 -artifact_prefix="build/fuzz/faults/$name-" \
         "build/fuzz/corpus/$name" "fuzz/corpus/$name" >"$log" 2>&1; then
    tail -n 50 "$log" >&2
    fail "$name has found a fault"
  fi
  say "$name: $(grep DONE "$log")"
}

# All targets at the same time.
declare -a running=()
for target in "${targets[@]}"; do
  fuzz "$target" &
  running+=($!)
done
faults=0
for process in "${running[@]}"; do wait "$process" || faults=1; done
exit "$faults"

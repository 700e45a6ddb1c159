#!/usr/bin/env bash
# Finds the faults that the compiler alone does not see: shell syntax, tests that nothing builds,
# headers that do not compile alone, and the faults that clang-tidy and clang's warnings know. Every
# fault is an error.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

commands=build/release/compile_commands.json

check_shell() {
  local script
  for script in scripts/*.sh .ci/run; do bash -n "$script"; done
}

check_tests_are_built() {
  local test lost=0
  for test in tests/*_test.cpp; do
    if ! grep -qF "\"file\": \"$root/$test\"" "$commands"; then
      say "no target builds $test"
      lost=1
    fi
  done
  return "$lost"
}

# compile_flags SOURCE: the shell command by which the build compiles the source, up to the output
# file.
compile_flags() {
  sed -n "s|^ *\"command\": \"\(.*\) -o [^ ]* -c $root/$1\".*|\1|p" "$commands" | head -n 1 |
    sed 's/\\\\\\"/\\"/g'
}

# check_headers SOURCE: compiles each header that comes on standard input by itself, as SOURCE is
# compiled.
check_headers() {
  local -a flags
  eval "flags=($(compile_flags "$1"))"
  if [[ ${#flags[@]} -eq 0 ]]; then fail "the build does not compile $1"; fi
  xargs -r -P "$(nproc)" -I HEADER \
    "${flags[@]}" -fsyntax-only -include "$root/HEADER" -x c++ /dev/null
}

# headers FIND-ARGUMENT...: the headers that no source has as its first include.
headers() {
  local header
  find "$@" -name '*.h' | while read -r header; do
    if [[ ! -e ${header%.h}.cpp ]]; then echo "$header"; fi
  done
}

check_headers_alone() {
  headers src -not -path 'src/native/qt/*' | check_headers src/app/app.cpp
  headers src/native/qt | check_headers src/native/qt/desktop.cpp
  headers tools | check_headers tools/check/main.cpp
}

# Long functions would take the analyzer half a minute each: the analyzer follows a function's paths
# up to so many steps.
steps=(-extra-arg=-Xclang -extra-arg=-analyzer-config -extra-arg=-Xclang -extra-arg=max-nodes=30000)

# tidy FOLDERS [CHECKS [PRESET]]: over the sources in these folders, with these changes to
# .clang-tidy, as the preset compiles the sources.
tidy() {
  local log=build/clang-tidy-${1//|/-}.log
  if run-clang-tidy -quiet -j "$(nproc)" -p "build/${3:-release}" -checks="${2:-}" \
       "${steps[@]}" "^$root/($1)/" >"$log" 2>&1; then
    return
  fi
  sed 's/\x1b\[[0-9;]*m//g' "$log" | grep -E '(error|warning): ' | sort -u >&2 ||
    tail -n 40 "$log" >&2
  say "clang-tidy objects; the whole log is $log"
  return 1
}

# The macros of tests and benchmarks hide from the analyzer what is done, at ten times the cost.
check_tidy() {
  local faults=0
  tidy 'src|tools' || faults=1
  local -r in_tests='-clang-analyzer-*,-readability-function-cognitive-complexity'
  tidy 'tests|bench' "$in_tests" || faults=1
  configure fuzz OFF
  tidy fuzz "$in_tests" fuzz || faults=1
  return "$faults"
}

install_packages "${build_packages[@]}" "${desktop_packages[@]}" "${test_packages[@]}" \
                 "${sanitizer_packages[@]}" "${check_packages[@]}"
check_shell
# The build makes what some sources include.
configure release ON
build release
check_tests_are_built
check_headers_alone
check_tidy

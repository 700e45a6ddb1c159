#!/usr/bin/env bash
# Builds the package of the last commit twice, in two folders of different names and without a
# compiler cache, and fails unless both packages are the same bytes.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

export CCACHE_DISABLE=1
# Both builds are of this commit, whatever is committed in the meantime.
commit=$(git rev-parse HEAD)
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct "$commit")
export SOURCE_DATE_EPOCH
work=$(mktemp -d)
trap 'rm -rf --one-file-system "$work"' EXIT

# The second build differs in all that must not matter: the folder, the time zone, the language of
# the messages, the permissions of new files.
build_in() {
  local folder=$work/$1
  mkdir -p "$folder"
  git archive "$commit" | tar -x -C "$folder"
  local start=$SECONDS
  packages+=("$(cd "$folder" && umask "$2" && TZ=$3 LC_ALL=$4 bash scripts/package.sh)")
  say "built ${packages[-1]##*/} in $((SECONDS - start)) s"
}

# The files, or the control files, of a package, each with its sum.
sums() {
  local tree=$work/${2}-files
  mkdir -p "$tree"
  dpkg-deb --raw-extract "$1" "$tree"
  (cd "$tree" && find . -type f -exec sha256sum {} + | sort -k 2)
}

declare -a packages=()
build_in first 022 UTC C.UTF-8
build_in a-second-longer-name 077 Asia/Tokyo C
sha256sum "${packages[@]}"
if cmp "${packages[@]}"; then
  say "both packages are the same bytes"
else
  diff <(sums "${packages[0]}" first) <(sums "${packages[1]}" second) ||
    fail "the files above differ"
  diff <(dpkg-deb --contents "${packages[0]}") <(dpkg-deb --contents "${packages[1]}") ||
    fail "the times or permissions above differ"
  fail "the files are the same, the archives around the files differ"
fi

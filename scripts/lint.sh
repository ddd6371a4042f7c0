#!/bin/sh
# Checks format and lint of all C++ sources, and the shell scripts.
#   scripts/lint.sh          in a quarter of an hour
#   scripts/lint.sh --deep   with the path-sensitive analysis of the library
set -eu
cd "$(dirname "$0")/.."
build=build/lint
checks='--checks=-clang-analyzer-*'
[ "${1:-}" != --deep ] || checks=--checks=

printf '\n== format\n'
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror

printf '\n== shell scripts\n'
scripts/check-scripts.sh

printf '\n== lint\n'
# The generated meta-object code is not ours.
cmake --preset lint >/dev/null
git ls-files 'src/*.cpp' 'tools/*.cpp' 'examples/*.cpp' |
    xargs -P "$(nproc)" -n 3 clang-tidy -p "$build" --quiet "$checks" 2>/dev/null
echo 'clean'

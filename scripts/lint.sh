#!/bin/sh
# Checks format and lint of all C++ sources. Takes the build directory with compile_commands.json.
#   scripts/lint.sh build/release          in two minutes
#   scripts/lint.sh build/release --deep   with the path-sensitive analysis of the library
set -eu
cd "$(dirname "$0")/.."
build=${1:-build/release}
checks='--checks=-clang-analyzer-*'
[ "${2:-}" != --deep ] || checks=--checks=

printf '\n== format\n'
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror

printf '\n== lint\n'
# The generated meta-object code is not ours.
git ls-files 'src/*.cpp' 'tools/*.cpp' 'examples/*.cpp' |
    xargs -P "$(nproc)" -n 3 clang-tidy -p "$build" --quiet "$checks" 2>/dev/null
echo 'clean'

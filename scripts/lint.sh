#!/bin/sh
# Checks format and lint of the C++ sources, and the shell scripts.
#   scripts/lint.sh             in twenty minutes on two cores
#   scripts/lint.sh --changed   lint of the files alone that changed since origin's branch; there, in the last commit
#   scripts/lint.sh --deep      with the path-sensitive analysis of the library
set -eu
cd "$(dirname "$0")/.."
# One version on every release of Debian, each of which has several: another one formats and warns otherwise.
llvm=19
checks='--checks=-clang-analyzer-*'
[ "${1:-}" != --deep ] || checks=--checks=

# The commit that changes are counted from; without one, all files have changed.
base() {
    origin=$(git merge-base HEAD origin/HEAD 2>/dev/null) || origin=
    if [ -n "$origin" ] && [ "$origin" != "$(git rev-parse HEAD)" ]; then
        echo "$origin"
    else
        git rev-parse --quiet --verify HEAD~1 || git hash-object -t tree --stdin </dev/null
    fi
}

sources() {
    if [ "${1:-}" = --changed ]; then
        git diff --name-only --diff-filter=d "$(base)" -- 'src/*.cpp' 'tools/*.cpp' 'examples/*.cpp'
    else
        git ls-files 'src/*.cpp' 'tools/*.cpp' 'examples/*.cpp'
    fi
}

printf '\n== format\n'
git ls-files '*.cpp' '*.h' | xargs "clang-format-$llvm" --dry-run -Werror

printf '\n== shell scripts\n'
scripts/check-scripts.sh

# lint QT: the files on the input by the commands of a build with this Qt. The generated meta-object code is not ours, nor is
# the deprecated function that clang sees in Debian 12's std::stable_sort.
lint() {
    build=build/lint-qt$1
    cmake --preset lint -B "$build" -DZUCMTR_QT="$1" -DCMAKE_CXX_FLAGS=-Wno-deprecated-declarations >/dev/null
    xargs -r -P "$(nproc)" -n 3 "clang-tidy-$llvm" -p "$build" --quiet "$checks" 2>/dev/null
}

printf '\n== lint\n'
sources "${1:-}" | grep -v '^src/qt6/' | lint 5
of_qt6=$(sources "${1:-}" | grep '^src/qt6/' || true)
if [ -n "$of_qt6" ]; then
    scripts/install-packages.sh qt6
    echo "$of_qt6" | lint 6
fi
echo 'clean'

#!/bin/sh
# Runs every fuzzer for the given number of seconds (default 30), with address and undefined-behaviour sanitizers.
#   fuzz/run.sh SECONDS [FUZZER...]
# A finding ends the run with an error; the input lies in build/fuzz/findings. What it finds new goes to
# build/fuzz/corpus and is used again.
set -eu
cd "$(dirname "$0")/.."
seconds=${1:-30}
[ $# -eq 0 ] || shift

scripts/install-packages.sh build fuzz
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j "$(nproc)"
cd build/fuzz
fuzz/fuzz_seeds "$PWD/seeds"
mkdir -p findings

export LC_ALL=C.UTF-8
export ASAN_OPTIONS=allocator_may_return_null=1:detect_leaks=1
for fuzzer in ${*:-recorderfile uncompress startcomment ini conversion}; do
    printf '\n== %s, %s s\n' "$fuzzer" "$seconds"
    mkdir -p "corpus/$fuzzer"
    dictionary=../../fuzz/$fuzzer.dict
    [ -e "$dictionary" ] && dictionary=-dict=$dictionary || dictionary=
    # shellcheck disable=SC2086
    if ! "fuzz/fuzz_$fuzzer" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=4096 -malloc_limit_mb=2048 \
        -max_len=16384 -print_final_stats=1 -verbosity=0 -artifact_prefix="findings/$fuzzer-" $dictionary \
        "corpus/$fuzzer" "seeds/$fuzzer" "../../tests/regressions/$fuzzer" >"$fuzzer.log" 2>&1; then
        tail -n 100 "$fuzzer.log"
        echo "$fuzzer: a finding, its input lies in $PWD/findings" >&2
        exit 1
    fi
    grep -E 'stat::|Done' "$fuzzer.log"
done

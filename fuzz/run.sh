#!/bin/sh
# Runs every fuzzer for the given number of seconds (default 30), with address and undefined-behaviour sanitizers, as
# many at once as there are processors.
#   fuzz/run.sh SECONDS [FUZZER...]
# A finding ends the run with an error; the input is in build/asan/findings. New inputs go to
# build/asan/corpus and are used again.
set -eu
cd "$(dirname "$0")/.."
seconds=${1:-30}
[ $# -eq 0 ] || shift
[ $# -gt 0 ] || set -- recorderfile uncompress startcomment ini conversion comtrade
jobs=$(nproc)

scripts/install-packages.sh build test fuzz
cmake --preset asan >/dev/null
for fuzzer; do # the names of the programs in place of the fuzzers'
    set -- "$@" "fuzz_$fuzzer"
    shift
done
cmake --build build/asan -j "$jobs" --target fuzz_seeds "$@"
cd build/asan
fuzz/fuzz_seeds "$PWD/seeds"
mkdir -p findings

export LC_ALL=C.UTF-8
export ASAN_OPTIONS=allocator_may_return_null=1:detect_leaks=1
cat >run-fuzzer.sh <<'END'
fuzzer=${1#fuzz_}
mkdir -p "corpus/$fuzzer"
dictionary=../../fuzz/$fuzzer.dict
[ -e "$dictionary" ] && dictionary=-dict=$dictionary || dictionary=
if ! "fuzz/fuzz_$fuzzer" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=4096 -malloc_limit_mb=2048 \
    -max_len=16384 -print_final_stats=1 -verbosity=0 -artifact_prefix="findings/$fuzzer-" $dictionary \
    "corpus/$fuzzer" "seeds/$fuzzer" "../../tests/regressions/$fuzzer" >"$fuzzer.log" 2>&1; then
    tail -n 100 "$fuzzer.log"
    echo "$fuzzer: a finding, its input is in $PWD/findings" >&2
    exit 255 # ends the others too
fi
printf '%-13s %s s, %s executions, no finding\n' "$fuzzer:" "$seconds" \
    "$(sed -n 's/^stat::number_of_executed_units: *//p' "$fuzzer.log")"
END
export seconds
printf '%s\n' "$@" | xargs -P "$jobs" -I '{}' sh run-fuzzer.sh '{}'

#!/bin/bash
# Builds the fuzzers and runs each of them for a while.
set -uo pipefail
FADEWELL_ROOT=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd) || exit 1
# shellcheck source=setup.sh
. "$FADEWELL_ROOT/scripts/setup.sh"

usage() {
    cat <<'TEXT'
Usage: scripts/fuzz.sh SECONDS [FUZZER…]

Runs every fuzzer, or those named, for SECONDS each, beginning with the inputs in tests/fuzz/corpus.
An input that breaks something is kept in build-fuzz/found; once that is repaired it belongs into
the corpus, under a name that says what it is.
TEXT
}

# run_fuzzer NAME: nothing that it learns stays, so that the corpus remains small and readable.
run_fuzzer() {
    local learnt code
    learnt=$(mktemp -d) || fail 'No temporary folder can be made.'
    mkdir -p "build-fuzz/found"
    # Twice the time, should it not look at its own clock any more.
    timeout --kill-after=5 $((2 * seconds + 30)) "build-fuzz/fuzzers/$1" \
        -max_total_time="$seconds" -timeout=5 -rss_limit_mb=1024 -max_len=4096 -print_final_stats=1 \
        -artifact_prefix="build-fuzz/found/$1-" "$learnt" "tests/fuzz/corpus/$1" >"$learnt.log" 2>&1
    code=$?
    if ((code == 0)); then
        echo "$1: $(sed -n 's/^stat::number_of_executed_units: *//p' "$learnt.log") inputs, nothing found"
    else
        tail -n 40 "$learnt.log" >&2
        echo "$1: FAILED"
    fi
    rm -rf "$learnt" "$learnt.log"
    return "$code"
}

case ${1-} in
-h | --help) usage && exit ;;
'' | 0* | *[!0-9]*) usage >&2 && exit 2 ;;
esac
readonly seconds=$1
shift

setup build ci
build fuzz build-fuzz fuzzers
cd "$FADEWELL_ROOT" || exit 1
fuzzers=(tests/fuzz/corpus/*)
(($#)) || set -- "${fuzzers[@]##*/}"
failures=0
for fuzzer; do
    [[ -x build-fuzz/fuzzers/$fuzzer ]] || fail "There is no fuzzer '$fuzzer'."
    run_fuzzer "$fuzzer" || ((failures += 1))
done
((failures == 0))

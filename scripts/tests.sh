# shellcheck shell=bash
# Sourced by ./test and .ci/run: runs a build's tests and counts their cases.
passed=0
failed=0
skipped=0

# number_of KEY FILE: the first "KEY": number of a test program's report, which is its total.
number_of() {
    sed -n "s/^ *\"$1\": *\([0-9]*\).*/\1/p;" "$2" | head -n 1
}

# count_program REPORT STATUS: the cases of one test program. One that crashed has left no report, and
# one that failed after its last case (a leak, a data race) no failed case: both count as one failure.
count_program() {
    local report=$1 status=$2 bad=0 left_out=0 all=0
    if [[ -s $report ]]; then
        all=$(number_of tests "$report")
        bad=$(number_of failures "$report")
        left_out=$(($(number_of disabled "$report") + $(grep -c '"result": "SKIPPED"' "$report")))
    elif [[ $status == run ]]; then
        all=1
    fi
    if [[ $status != run && $bad == 0 ]]; then
        bad=1
        ((all += 1))
    fi
    ((passed += all - bad - left_out, failed += bad, skipped += left_out))
}

# last_report PROGRAM: its report of the last try; a program that runs again numbers its further ones.
last_report() {
    local report=$1.json try=1
    while [[ -e $1_$try.json ]]; do
        report=$1_$((try++)).json
    done
    echo "$report"
}

# run_tests FOLDER JOBS CTEST-OPTION…: false if anything failed. Finding no test is a failure.
run_tests() {
    local folder=$1 jobs=$2 results name status code
    shift 2
    results=$(cd "$folder" && pwd)/test-results
    rm -rf "$results" && mkdir -p "$results"
    GTEST_OUTPUT=json:$results/ ctest --test-dir "$folder" --no-tests=error --output-on-failure \
        --parallel "$jobs" --output-junit "$results/all.xml" "$@"
    code=$?
    if [[ -s $results/all.xml ]]; then
        while IFS='|' read -r name status; do
            count_program "$(last_report "$results/$name")" "$status"
        done < <(sed -n 's/.*<testcase name="\([^"]*\)".* status="\([a-z]*\)".*/\1|\2/p' "$results/all.xml")
    fi
    ((code == 0)) || ((failed)) || failed=1
    return "$code"
}

# The last line of every test run.
print_total() {
    ((skipped == 0)) || echo "$skipped skipped"
    echo "$passed passed, $failed failed"
    ((failed == 0))
}

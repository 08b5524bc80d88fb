# shellcheck shell=bash
# Sourced by test and .ci/run.

# run_tests FOLDER KIND NAME: runs the tests of a build folder, all or of a kind and a part of the name; ends with
# "N passed, N failed", counted in test cases. A test program that ended before its cases did counts as a failed one.
run_tests() {
    local folder=$FADEWELL_ROOT/$1 results selection=() file passed=0 failed=0 code=0
    [ -z "$2" ] || selection+=(--label-regex "^$2\$")
    [ -z "$3" ] || selection+=(--tests-regex "$3")
    results=$(mktemp -d)
    GTEST_OUTPUT="json:$results/" ctest --test-dir "$folder" --output-on-failure --no-tests=error \
        --output-log "$results/log" "${selection[@]}" || code=$?
    for file in "$results"/*.json; do
        [ -e "$file" ] || continue
        # The first "tests" and "failures" of a file are those of the whole program.
        failed=$((failed + $(sed -n '0,/"failures":/s/.*"failures": \([0-9]*\).*/\1/p' "$file")))
        passed=$((passed + $(sed -n '0,/"tests":/s/.*"tests": \([0-9]*\).*/\1/p' "$file")))
    done
    passed=$((passed - failed))
    # Those that crashed or hung leave no file.
    local ran files
    ran=$(grep -cE '^ *[0-9]+/[0-9]+ Test +#' "$results/log" || true)
    files=$(find "$results" -name '*.json' | wc -l)
    failed=$((failed + ran - files))
    rm -rf "$results"
    [ "$code" = 0 ] || [ "$failed" -gt 0 ] || failed=1
    echo "$passed passed, $failed failed"
    [ "$code" = 0 ] && [ "$failed" = 0 ]
}

# Sourced by test: runs stages, keeps count, and says at the end what passed and what failed.

passed=0
failed=0
summary=()

note() { # STATE STAGE TEXT
    summary+=("$(printf '  %-6s %-34s %s' "$1" "$2" "$3")")
}

# check STAGE LOG COMMAND...: one command that succeeds or does not, counted as one.
check() {
    local stage=$1 began=$SECONDS
    if step "$@"; then
        passed=$((passed + 1))
        note pass "$stage" "$((SECONDS - began)) s"
    else
        failed=$((failed + 1))
        note FAIL "$stage" "$((SECONDS - began)) s"
        return 1
    fi
}

# A build that fails counts as a failure; one that succeeds is no test.
built() { # PRESET TITLE [TARGET...]
    local began=$SECONDS
    if build "$@"; then
        note built "$1" "$((SECONDS - began)) s"
    else
        failed=$((failed + 1))
        note FAIL "building $1" "$((SECONDS - began)) s"
        return 1
    fi
}

# suite STAGE PRESET ARGUMENT...: runs CTest in the preset's tree and counts its cases.
suite() {
    local stage=$1 preset=$2 began=$SECONDS status=0 report cases good bad skipped
    shift 2
    report="$PWD/$LOG_FOLDER/ctest-${stage// /-}.xml"
    rm -f "$report"
    step "Testing: $stage" "ctest-${stage// /-}" \
        ctest --preset "$preset" ${TAPALONG_LONG:+--timeout 7200 --build-config Long} --output-junit "$report" \
        --test-output-size-passed 1000000 --test-output-size-failed 1000000 "$@" || status=1
    python3 tools/setup/figures.py "$report"
    read -r cases good bad skipped < <(python3 tools/setup/count_cases.py "$report")
    # No report, no case, or a complaint of CTest itself: the stage as a whole has failed.
    if [ "$status" -ne 0 ] && [ "$bad" -eq 0 ]; then bad=1; fi
    passed=$((passed + good))
    failed=$((failed + bad))
    note "$([ "$bad" -eq 0 ] && echo pass || echo FAIL)" "$stage" \
        "$((SECONDS - began)) s, $good of $cases cases$([ "$skipped" -eq 0 ] || echo ", $skipped skipped")"
}

left_out() { note '-' "$1" "$2"; }

finish() {
    say ""
    say "Summary ($SECONDS s)"
    printf '%s\n' "${summary[@]}"
    say ""
    say "$passed passed, $failed failed"
    [ "$failed" -eq 0 ]
}

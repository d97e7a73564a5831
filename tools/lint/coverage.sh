#!/usr/bin/env bash
# Runs the core's tests in the coverage tree and fails when fewer than 98 of 100 lines of the core were executed.
set -u
tree=build/coverage
core='src/(base|text|session|settings|lockdown|auth|sound|views|app|platform)/[^/]+$'
# Counts of an earlier build would be added to these.
find "$tree" -name '*.gcda' -delete
ctest --preset coverage --label-exclude 'desktop|architecture' --parallel "$1" || exit 1
# Branches that exceptions would take are the compiler's and not ours.
gcovr --root . --filter "$core" --exclude '.*[.]test[.]' --exclude-throw-branches --exclude-unreachable-branches \
    --sort-uncovered --print-summary --fail-under-line 98 "$tree"

#!/usr/bin/env bash
# Fails on a shell script that does not parse: those named *.sh, and those at the root.
. tools/lint/sources.sh
status=0
while read -r script; do
    bash -n "$script" || status=1
done < <(
    own_files '*.sh'
    grep -lE '^#!.*\b(ba)?sh$' run test bench .ci/run
)
exit $status

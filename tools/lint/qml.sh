#!/usr/bin/env bash
# Runs qmllint over our QML module through the target that knows its types; any warning is a failure.
# Newer versions of qmllint print warnings and still succeed, so its words are read and not only its status.
set -u
output=$(cmake --build "$1" --target all_qmllint 2>&1)
status=$?
printf '%s\n' "$output"
[ "$status" -eq 0 ] && ! grep -qE '^(Warning|Error|Critical): ' <<<"$output"

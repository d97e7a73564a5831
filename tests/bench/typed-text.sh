#!/usr/bin/env bash
# Runs the benchmark of the typed text on a virtual display of the size that its figures are meant for.
set -u
program="$(dirname "${TAPALONG_PROGRAM:?is set by ./bench}")/typed_text_bench"
export QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=1
exec xvfb-run -a -s "-screen 0 1920x1080x24" "$program"

#!/usr/bin/env bash
# Plays a real session of the built program on a virtual display and leaves numbered pictures in build/demo.
set -eu
root=$(dirname "$(readlink -f "$0")")/../..
exec /usr/bin/python3 "$root/tools/demo/demo.py" "${1:-$root/build/release/bin/tapalong}" "${2:-$root/build/demo}"

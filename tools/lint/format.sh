#!/usr/bin/env bash
# Fails where clang-format 14 would change one of our C++ files.
. tools/lint/sources.sh
own_files '*.cpp' '*.h' | xargs clang-format-14 --dry-run -Werror

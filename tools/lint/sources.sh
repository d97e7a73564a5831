# Sourced by the lint scripts: lists our own files, one per line; also without git, as in an unpacked archive.

own_files() { # PATTERN...: as find's -name takes it
    local pattern arguments=()
    for pattern in "$@"; do
        arguments+=(-o -name "$pattern")
    done
    find . \( -path ./build -o -path ./.git \) -prune -o -type f \( "${arguments[@]:1}" \) -print | sort
}

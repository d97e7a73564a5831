# Sourced by run, test and bench: configures and builds one preset.

# Ninja runs CMake again by itself when a CMakeLists.txt changes, but knows nothing of the presets.
configure() { # PRESET
    local tree="build/$1"
    if [ -f "$tree/build.ninja" ] && [ ! CMakePresets.json -nt "$tree/build.ninja" ]; then
        return 0
    fi
    step "Configuring $1" "configure-$1" cmake --preset "$1"
}

# build PRESET TITLE [TARGET...]: all targets when none is named.
build() {
    local preset=$1 title=$2
    shift 2
    configure "$preset" && step "$title" "build-$preset" cmake --build --preset "$preset" ${1:+--target "$@"}
}

# Sourced by run, test and bench: sees to it that the packages of tools/setup/packages.list are installed.

PACKAGE_LIST=tools/setup/packages.list
STAMP_FOLDER=build/setup

package_names() { # GROUP: its entries, as they stand in the list
    awk -v group="[$1]" '/^\[/ { wanted = ($1 == group); next } wanted && NF && !/^#/ { print $1 }' "$PACKAGE_LIST"
}

all_installed() { # PACKAGE...
    local states
    states=$(dpkg-query -W -f '${db:Status-Abbrev}\n' "$@" 2>/dev/null) || return 1
    ! grep -qv '^.i ' <<<"$states"
}

# Installed once and the list unchanged since: then neither apt nor the network is asked again.
stamp_holds() { # STAMP KEY
    local key packages
    [ -f "$1" ] && { read -r key && read -r -a packages; } <"$1" && [ "$key" = "$2" ] && all_installed "${packages[@]}"
}

# resolve ENTRY...: sets `chosen` (packages of this suite), `absent` (entries it lacks), `skipped` (absent, but optional).
resolve() {
    local entry name candidates
    candidates=$(LC_ALL=C apt-cache policy $(tr '|?' '  ' <<<"$*") 2>/dev/null |
        awk '/^[^ ].*:$/ { name = substr($1, 1, length($1) - 1) } /^  Candidate: / && $2 != "(none)" { print name }')
    chosen=() absent=() skipped=()
    for entry in "$@"; do
        for name in $(tr '|?' '  ' <<<"$entry"); do
            if grep -qxF -- "$name" <<<"$candidates"; then
                chosen+=("$name")
                continue 2
            fi
        done
        case $entry in
            *'?') skipped+=("${entry%?}") ;;
            *) absent+=("$entry") ;;
        esac
    done
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

update_lists() { as_root apt-get update; }

install_chosen() {
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 \
        install -y --no-install-recommends "${chosen[@]}"
}

explain_other_system() { # GROUP...
    say "This system has no apt-get, so its packages cannot be installed from here. Tapalong needs:"
    local group
    for group in "$@"; do
        say ""
        sed -n "s/^\[$group\] /  To $group: /p" "$PACKAGE_LIST" | fold -s -w 96 | sed '2,$s/^/    /'
        say "    Debian calls them:"
        package_names "$group" | sed 's/?$//; s/|/ or /' | paste -sd ',' | sed 's/,/, /g' | fold -s -w 96 | sed 's/^/      /'
    done
    say ""
    say "Install these with your system's package manager, then say so: TAPALONG_SKIP_SETUP=1 $0"
}

explain_missing_rights() {
    say "Some packages are missing, and installing them needs the administrator's rights. Ask the administrator to run:"
    say ""
    say "  apt-get install --no-install-recommends ${chosen[*]}"
    say ""
    say "and then start $0 again."
}

explain_too_old() {
    say "This system's archive lacks: ${absent[*]}"
    say "Tapalong builds on Debian 12, Debian 13, and systems derived from them that have Qt 6.4 or newer."
}

may_install() { [ "$(id -u)" -eq 0 ] || command -v sudo >/dev/null; }

# The password is asked for here, on a line of its own, and not in the middle of a step.
ask_for_rights() {
    [ "$(id -u)" -eq 0 ] && return
    say "  Installing packages needs the administrator's rights; sudo may ask for your password."
    sudo -v
}

# ensure_packages GROUP...: returns only when they are installed; otherwise says what to do and leaves with status 1.
ensure_packages() {
    [ -z "${TAPALONG_SKIP_SETUP:-}" ] || return 0
    if ! command -v apt-get >/dev/null; then
        explain_other_system "$@"
        exit 1
    fi
    local entries=() group stamp key chosen absent skipped
    for group in "$@"; do
        mapfile -t -O "${#entries[@]}" entries < <(package_names "$group")
    done
    stamp="$STAMP_FOLDER/$(tr ' ' '-' <<<"$*")"
    key=$(cat "$PACKAGE_LIST" /etc/os-release 2>/dev/null | sha256sum | cut -c 1-64)
    ! stamp_holds "$stamp" "$key" || return 0

    say "Setting up: looking at ${#entries[@]} packages"
    resolve "${entries[@]}"
    if [ ${#absent[@]} -gt 0 ] || [ ${#skipped[@]} -gt 0 ] || ! all_installed "${chosen[@]}"; then
        install_missing
    fi
    [ ${#skipped[@]} -eq 0 ] || say "  Not packaged on this system, done without: ${skipped[*]}"
    mkdir -p "$STAMP_FOLDER"
    printf '%s\n%s\n' "$key" "${chosen[*]}" >"$stamp"
}

install_missing() {
    if ! may_install; then
        # What an administrator would get; without lists every name counts as one.
        [ ${#absent[@]} -eq 0 ] || chosen+=("${absent[@]%%|*}")
        all_installed "${chosen[@]}" && return
        explain_missing_rights
        exit 1
    fi
    ask_for_rights || exit 1
    step "Reading the package lists" apt-update update_lists ||
        say "  The package lists could not be refreshed; going on with those that are here."
    resolve "${entries[@]}"
    if [ ${#absent[@]} -gt 0 ]; then
        explain_too_old
        exit 1
    fi
    all_installed "${chosen[@]}" ||
        step "Installing what is missing (a few minutes the first time)" apt-install install_chosen || exit 1
}

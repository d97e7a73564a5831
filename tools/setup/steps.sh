# Sourced by run, test and bench: says what is being done, one line per step; the long output goes to build/log.

LOG_FOLDER=build/log
PROGRESS_EVERY=30

say() { printf '%s\n' "$*"; }

last_line() { tail -n 5 "$1" 2>/dev/null | tr -d '\r' | grep -v '^ *$' | tail -n 1 | cut -c 1-"${2:-70}"; }

# On a terminal the step's line counts the seconds; elsewhere a line now and then shows that work goes on.
show_progress() { # TITLE LOG
    local began=$SECONDS seconds
    while kill -0 $$ 2>/dev/null; do
        sleep 1 </dev/null >/dev/null 2>&1
        seconds=$((SECONDS - began))
        if [ -t 1 ]; then
            printf '\r\033[K  … %s  %s s  %s' "$1" "$seconds" "$(last_line "$2" 45)"
        elif [ $((seconds % PROGRESS_EVERY)) -eq 0 ]; then
            printf '    %s s: %s\n' "$seconds" "$(last_line "$2")"
        fi
    done
}

# step TITLE LOG_NAME COMMAND...: runs it, shows one line, and the tail of its log when it fails.
step() {
    local title=$1 log="$LOG_FOLDER/$2.log" began=$SECONDS status=0 ticker
    shift 2
    mkdir -p "$LOG_FOLDER"
    : >"$log"
    [ -t 1 ] || printf '  … %s\n' "$title"
    show_progress "$title" "$log" &
    ticker=$!
    "$@" >"$log" 2>&1 </dev/null || status=$?
    kill "$ticker" 2>/dev/null
    wait "$ticker" 2>/dev/null
    [ ! -t 1 ] || printf '\r\033[K'
    if [ "$status" -eq 0 ]; then
        printf '  ✓ %s (%s s)\n' "$title" $((SECONDS - began))
    else
        printf '  ✗ %s (%s s): the end of %s:\n' "$title" $((SECONDS - began)) "$log"
        tail -n 40 "$log" | sed 's/^/      /'
    fi
    return "$status"
}

# shellcheck shell=bash
# What ./run prints: its own messages go to standard error, and only while it works or when it fails.

say() { printf 'run: %s\n' "$*" >&2; }

fail() {
    say "$@"
    exit 1
}

on_terminal() { [[ -t 2 && ${TERM:-dumb} != dumb ]]; }

# One line that the next one overwrites.
progress_line() {
    : "${terminal_columns:=$(tput cols 2>/dev/null || echo 80)}"
    printf '\r\033[K%.*s' $((terminal_columns - 1)) "$1" >&2
}

progress_end() { ! on_terminal || printf '\r\033[K' >&2; }

# run_logged LOG PROGRESS REASON COMMAND...: runs the command with its output in the file LOG and piped through the
# function PROGRESS. When it fails, prints the command and what the function REASON extracts from the log.
run_logged() {
    local log=$1 progress=$2 reason=$3 status=0
    shift 3
    mkdir -p "${log%/*}"
    "$@" </dev/null 2>&1 | tee "$log" | "$progress" || status=${PIPESTATUS[0]}
    progress_end
    ((status == 0)) || {
        say "failed: $*"
        "$reason" "$log" | cut -c1-400 >&2
        say "the whole log is $log"
    }
    return "$status"
}

# only_one WHAT LOCKFILE COMMAND...: runs the command while no other ./run holds the lock.
only_one() {
    local what=$1 lock=$2
    shift 2
    mkdir -p "${lock%/*}"
    (
        flock --nonblock 9 || {
            say "waiting for another ./run that is $what"
            flock 9
        }
        "$@"
    ) 9>"$lock"
}

# shellcheck shell=bash
# Runs checks one after the other, all of them whatever fails, and counts.
# A step NAME is a function step_NAME. It leaves a report of ctest in $step_report where it ran tests, and
# otherwise counts as one check. Its results are printed on standard output.
# A step NAME& goes on beside those that follow it, at idle priority, and its results are printed last: the tests of
# windows and of live sound wait for timers for most of their time.

total_passed=0
total_failed=0
failed_steps=()
# One entry per step that has run.
result_names=()
result_verdicts=()
result_seconds=()

# run_steps NAME...: returns 0 if nothing failed.
run_steps() {
    local name left_out=()
    mkdir -p "$checks"
    for name in "$@"; do
        if ! has_tool_of "${name%&}"; then
            left_out+=("${name%&}")
        elif [[ $name == *"&" ]]; then
            begin_beside "${name%&}"
        else
            run_step "$name"
        fi
    done
    end_beside
    print_failures
    ((${#left_out[@]} == 0)) || printf 'left out here: %s (Debian 12 judges them, with clang-format 14 and clang-tidy 14)\n' "${left_out[*]}"
    printf '%d passed, %d failed\n' "$total_passed" "$total_failed"
    ((total_failed == 0))
}

run_step() {
    local started=$SECONDS status=0
    prepare_step "$1"
    "step_$1" || status=$?
    record_step "$1" "$status" "$started"
}

prepare_step() {
    step_log=$checks/$1.log
    step_report=$checks/$1.xml
    rm -f "$step_report"
}

# The step that runs beside the others: its name, process group and start.
beside_name= beside_group= beside_started=

# A process group of its own: it ends with this program, also where a signal ends that.
begin_beside() {
    prepare_step "$1"
    beside_name=$1 beside_started=$SECONDS
    trap 'kill -TERM -- "-$beside_group" 2>/dev/null' EXIT
    set -m
    (
        chrt --idle --pid 0 "$BASHPID"
        "step_$1"
    ) &
    beside_group=$!
    set +m
}

end_beside() {
    [[ -n $beside_name ]] || return 0
    local status=0
    wait "$beside_group" || status=$?
    trap - EXIT
    step_log=$checks/$beside_name.log step_report=$checks/$beside_name.xml
    record_step "$beside_name" "$status" "$beside_started"
}

# record_step NAME STATUS STARTED
record_step() {
    local name=$1 status=$2 started=$3 passed=0 failed=0 verdict skipped
    count_results
    total_passed=$((total_passed + passed)) total_failed=$((total_failed + failed))
    verdict="$passed passed"
    ((failed == 0)) || {
        verdict+=", $failed FAILED"
        failed_steps+=("$name")
    }
    skipped=$(skipped_parts)
    result_names+=("$name") result_seconds+=($((SECONDS - started)))
    result_verdicts+=("$verdict${skipped:+; ${skipped//$'\n'/; }}")
    printf '%-14s %-28s %5d s\n' "$name" "$verdict" "${result_seconds[-1]}"
    [[ -z $skipped ]] || printf '  %s\n' "${skipped//$'\n'/$'\n'  }"
}

# Sets passed and failed from the step's status and its report. A test that was skipped or could not be started
# has not passed.
count_results() {
    if [[ -f $step_report ]]; then
        passed=$(grep -c '<testcase .*status="run"' "$step_report")
        failed=$(failed_tests | wc -l)
        ((status == 0 || failed > 0)) || failed=1
    elif ((status == 0)); then
        passed=1
    else
        failed=1
    fi
}

failed_tests() { grep '<testcase ' "$step_report" | sed -n '/status="run"/! s/.*testcase name="\([^"]*\)".*/\1/p'; }

# What tests left out because this machine lacks it: lines "skipped: WHAT: REASON" of what they print.
skipped_parts() {
    [[ ! -f $step_report ]] || sed -nE 's/^(.*<system-out>)?(skipped: [^<]*).*/\2/p' "$step_report" | sort -u
}

print_failures() {
    ((${#failed_steps[@]} > 0)) || return 0
    local name
    printf '\nFailed, and how to repeat it:\n'
    for name in "${failed_steps[@]}"; do
        printf '  ./run test %s\n' "$name"
        step_report=$checks/$name.xml
        [[ ! -f $step_report ]] || failed_tests | sed 's/^/      /'
    done
    printf '\n'
}

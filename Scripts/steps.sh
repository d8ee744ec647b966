# shellcheck shell=bash
# Runs checks one after the other, all of them whatever fails, and counts.
# A step NAME is a function step_NAME. It leaves a report of ctest in $step_report where it ran tests, and
# otherwise counts as one check. Its results are printed on standard output.

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
        if has_tool_of "$name"; then run_step "$name"; else left_out+=("$name"); fi
    done
    print_failures
    ((${#left_out[@]} == 0)) || printf 'left out here: %s (Debian 12 judges them, with clang-format 14 and clang-tidy 14)\n' "${left_out[*]}"
    printf '%d passed, %d failed\n' "$total_passed" "$total_failed"
    ((total_failed == 0))
}

run_step() {
    local name=$1 status=0 passed=0 failed=0 started=$SECONDS verdict skipped
    step_log=$checks/$name.log
    step_report=$checks/$name.xml
    rm -f "$step_report"
    "step_$name" || status=$?
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

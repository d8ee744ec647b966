# shellcheck shell=bash
# Writes the result of a full run into docs/verification.md, below the line that marks the place.

source "$root/Scripts/machine.sh"

verification_marker='<!-- Below this line: written by ./run test --full. -->'

record_verification() {
    local document=$root/docs/verification.md description
    # Before anything is written, which would count as a change.
    description=$(describe_run)
    {
        sed "\|^$verification_marker\$|q" "$document"
        printf '\n%s\n' "$description"
        printf '\n| step | what it shows | result | time |\n|---|---|---|---:|\n'
        verification_rows
        printf '\nTogether: %d passed, %d failed.' "$total_passed" "$total_failed"
        [[ ! -f $coverage_table ]] || printf ' Line coverage: %s.' "$(awk '/^TOTAL/ { print $4 }' "$coverage_table")"
        printf '\n'
    } >"$document.new"
    mv "$document.new" "$document"
}

describe_run() {
    printf '%s, commit %s.\n' "$(date -u '+%Y-%m-%d %H:%M UTC')" "$(commit)"
    printf '%s; %s; %s.\n' "$(describe_machine)" "$(g++ --version | head -n 1)" "$(clang++ --version | head -n 1)"
}

verification_rows() {
    local i
    for i in "${!result_names[@]}"; do
        printf '| %s | %s | %s | %s s |\n' "${result_names[i]}" "${step_title[${result_names[i]}]}" \
            "${result_verdicts[i]}" "${result_seconds[i]}"
    done
}

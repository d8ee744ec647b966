# shellcheck shell=bash
# Writes the result of a full run into docs/verification.md, below the line that says so.

verification_marker='<!-- Below this line: written by ./run test --full. -->'

record_verification() {
    local document=$root/docs/verification.md
    {
        sed "\|^$verification_marker\$|q" "$document"
        printf '\n'
        describe_run
        printf '\n| step | what it shows | result | time |\n|---|---|---|---:|\n'
        verification_rows
        printf '\nTogether: %d passed, %d failed.' "$total_passed" "$total_failed"
        [[ ! -f $coverage_table ]] || printf ' Line coverage: %s.' "$(awk '/^TOTAL/ { print $4 }' "$coverage_table")"
        printf '\n'
    } >"$document.new"
    mv "$document.new" "$document"
}

describe_run() {
    local memory
    memory=$(awk '/^MemTotal/ { printf "%.0f GiB", $2 / 1048576 }' /proc/meminfo)
    printf '%s, commit %s.\n' "$(date -u '+%Y-%m-%d %H:%M UTC')" "$(commit)"
    printf '%s, %s processors, %s; %s, kernel %s; %s; %s.\n' "$(processor)" "$(nproc)" "$memory" \
        "$(sed -n 's/^PRETTY_NAME="\(.*\)"/\1/p' /etc/os-release)" "$(uname -r)" \
        "$(g++ --version | head -n 1)" "$(clang++-14 --version | head -n 1)"
}

processor() { sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1 | grep . || uname -m; }

commit() {
    local changes="" ask=(git -c "safe.directory=*" -C "$root")
    [[ -z $("${ask[@]}" status --porcelain) ]] || changes=" with changes"
    printf '%s%s' "$("${ask[@]}" rev-parse --short HEAD)" "$changes"
}

verification_rows() {
    local i
    for i in "${!result_names[@]}"; do
        printf '| %s | %s | %s | %s s |\n' "${result_names[i]}" "${step_title[${result_names[i]}]}" \
            "${result_verdicts[i]}" "${result_seconds[i]}"
    done
}

# shellcheck shell=bash
# What a result was obtained on, for the documents that record one.

describe_machine() {
    local memory
    memory=$(awk '/^MemTotal/ { printf "%.0f GiB", $2 / 1048576 }' /proc/meminfo)
    printf '%s, %s processors, %s; %s, kernel %s' "$(processor)" "$(nproc)" "$memory" \
        "$(sed -n 's/^PRETTY_NAME="\(.*\)"/\1/p' /etc/os-release)" "$(uname -r)"
}

processor() { sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1 | grep . || uname -m; }

commit() {
    local changes="" ask=(git -c "safe.directory=*" -C "$root")
    [[ -z $("${ask[@]}" status --porcelain) ]] || changes=" with changes"
    printf '%s%s' "$("${ask[@]}" rev-parse --short HEAD)" "$changes"
}

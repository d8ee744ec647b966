# shellcheck shell=bash
# Brings the program up to date and becomes it.

run_program() {
    local program=$root/build/program/Apps/varno/varno
    program_is_fresh "$program" || bring_program_up_to_date || exit 1
    exec "$program" "$@"
}

# The stamp is as old as the start of the last good build: nothing that the program is made of may be newer.
stamp=$root/build/program.stamp

program_is_fresh() {
    [[ -x $1 && -f $stamp && ! /var/lib/dpkg/status -nt $stamp ]] || return 1
    local folder parts=("$root/CMakeLists.txt" "$root/CMakePresets.json")
    for folder in "$root"/*/; do
        case ${folder%/} in
        */build | */Tests | */Benchmarks | */docs) ;;
        *) parts+=("$folder") ;;
        esac
    done
    [[ -z $(find "${parts[@]}" -newer "$stamp" -print -quit) ]]
}

bring_program_up_to_date() {
    need_packages program || return
    mkdir -p "$root/build" || return
    local started=$stamp.$$
    : >"$started"
    if build_preset program varno Varno-S; then
        mv "$started" "$stamp"
    else
        rm -f "$started"
        return 1
    fi
}

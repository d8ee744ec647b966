# shellcheck shell=bash
# Brings the program up to date and replaces ./run by it.

run_program() {
    local program=$root/build/program/Apps/varno/varno
    program_is_fresh "$program" || { need_packages program && alone_in program build_program; } || exit 1
    exec "$program" "$@"
}

# The stamp has the time at which the last successful build began: no file that the program is made of may be newer.
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

build_program() {
    : >"$stamp.new"
    configure_and_build program varno Varno-S && mv "$stamp.new" "$stamp"
}

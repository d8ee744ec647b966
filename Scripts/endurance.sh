# shellcheck shell=bash
# Hours of work and load. The tests run the short form of each part.

source "$root/Scripts/machine.sh"

endurance_command() {
    local option
    for option in "$@"; do
        case $option in
        --help | -h | --list)
            in_root Tests/Endurance/run "$@"
            return
            ;;
        esac
    done
    local requirements purposes targets
    mapfile -t requirements < <(in_root Tests/Endurance/run --requirements "$@")
    # What is wrong with the arguments has been said.
    ((${#requirements[@]} == 2)) || return 2
    read -ra purposes <<<"${requirements[0]}"
    read -ra targets <<<"${requirements[1]}"
    need_packages program test "${purposes[@]}" && build_preset release "${targets[@]}" &&
        only_one "testing endurance" "$root/build/endurance.lock" in_root \
            Tests/Endurance/run --machine "commit $(commit); $(describe_machine); load before: $(cut -d " " -f 1 /proc/loadavg)" "$@"
}

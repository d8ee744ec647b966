# shellcheck shell=bash
# Hostile input for as long as one likes: not a part of the tests, which have its seeds.

fuzz_command() {
    local targets
    if [[ " $* " == *" --help "* ]]; then
        in_root Scripts/fuzz --help
        return
    fi
    targets=$(in_root Scripts/fuzz --targets "$@") || return
    need_packages program test || return
    mapfile -t targets <<<"$targets"
    build_preset fuzz "${targets[@]}" && alone_in fuzz in_root Scripts/fuzz "$@"
}

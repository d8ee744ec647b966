# shellcheck shell=bash
# What the tests would notice. Takes hours for a sample that tells much: not a part of the tests.

mutants_command() {
    if [[ " $* " == *" --help "* ]]; then
        in_root Scripts/mutants --help
    else
        need_packages program test mutants && only_one "testing changes" "$root/build/mutants.lock" in_root test_mutants "$@"
    fi
}

test_mutants() {
    need_vstgui || return
    # A cache of compilations is used where there is one.
    ! command -v ccache >/dev/null || export CMAKE_CXX_COMPILER_LAUNCHER=ccache
    Scripts/mutants "$@"
}

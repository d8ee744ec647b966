# shellcheck shell=bash
# Measurements. They say what they see and judge nothing: machines differ, and noise does not fail a build.

bench_command() {
    need_packages program test || return
    build_preset release varno_bench || return
    "$root/build/release/Benchmarks/varno_bench" "$@"
}

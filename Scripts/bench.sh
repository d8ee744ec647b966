# shellcheck shell=bash
# Measurements. Results differ between machines and depend on what else runs: nothing here belongs to the tests, and
# only --check compares with limits. bench-report states the limits and what the results mean.

source "$root/Scripts/machine.sh"

bench_usage() {
    cat <<'END'
usage: ./run bench [--long | --check]
       ./run bench --filter REGEX [OPTIONS OF GOOGLE BENCHMARK...]

Measures everything, prints the table of required figures, and writes all results into docs/performance.md. A quiet
machine is needed for figures that mean something; it takes about five minutes. The document has a section for each model of
processor; those of others stay.

  --long           also renders a file of three hours, which takes 2 GB in the folder for temporary files (TMPDIR)
  --check          measures only what is required, in less than four minutes; names what was missed and fails if
                   anything was. Writes no document
  --filter REGEX   runs the measurements whose names match and prints what Google Benchmark prints; further options
                   are its own, such as --benchmark_repetitions=9. The environment variable VARNO_SIMD (baseline, avx2,
                   avx512 or emulated) chooses the routine's instruction set
END
}

bench_command() {
    case "$#:${1-}" in
    0:) bench_with in_root measure_everything song ;;
    1:--long) bench_with in_root measure_everything all ;;
    1:--check) bench_with in_root check_required ;;
    1:--help) bench_usage ;;
    *:--filter)
        [[ -n ${2-} ]] || usage_error "--filter needs an expression; ./run bench --help tells more"
        bench_with measure_matching "${@:2}"
        ;;
    *) usage_error "bench does not take '$*'; ./run bench --help tells more" ;;
    esac
}

# bench_with COMMAND...: with the programs up to date, and no other measurement running.
bench_with() {
    need_packages program test && build_preset release varno_bench &&
        only_one "measuring" "$root/build/bench.lock" "$@"
}

bench_results=$root/build/bench
bench_document=$root/docs/performance.md

# The median of an odd number is one that was measured.
bench_repetitions=15
# Seconds that each repetition lasts, at least.
bench_repetition_seconds=0.1

measure_everything() {
    local load
    load=$(cut -d ' ' -f 1 /proc/loadavg)
    forget_results &&
        measure_required . . '^render/' &&
        measure_set avx2 &&
        measure_set avx512 &&
        measure model model . &&
        measure_once editor editor . || return
    [[ $1 == song ]] || measure_once memory render '^memory/' || return
    report_results --document "$bench_document" --processor "$(processor)" --machine "$(describe_measurement "$load")" &&
        say "all results are in $bench_document"
}

check_required() {
    forget_results &&
        measure_required '^(routine|instances)/(product|literal)|^minute/product' '^settings/(dearest|typical$)' \
            '^render/(program|sndfile|routine)/' &&
        report_results --check
}

# measure_required ROUTINE SETTINGS RENDER: of each program what the expression matches.
measure_required() {
    measure routine routine "$1" &&
        measure_set baseline &&
        measure settings settings "$2" &&
        measure plugin plugin '^plugin/quality' &&
        measure render render "$3" &&
        measure_once memory render '^memory/song'
}

# measure_set NAME: with this instruction set, in a process of its own beside the literal evaluation.
measure_set() { measure "routine-$1" routine '^routine/(product|literal)/channels:2' VARNO_SIMD="$1"; }

# measure RESULT PROGRAM REGEX [NAME=VALUE...]: repeated, the cases in random turn, so that other load on the machine
# affects all cases equally.
measure() {
    run_bench "$@" -- --benchmark_enable_random_interleaving=true --benchmark_repetitions="$bench_repetitions" \
        --benchmark_min_time="$bench_repetition_seconds"
}

# Once, for programs that repeat their cases themselves, or whose results do not vary.
measure_once() { run_bench "$@" --; }

# run_bench RESULT PROGRAM REGEX [NAME=VALUE...] -- OPTIONS...: leaves RESULT.json.
run_bench() {
    local result=$1 program=$2 filter=$3 environment=()
    shift 3
    while [[ $1 != -- ]]; do
        environment+=("$1")
        shift
    done
    say "measuring ($result)"
    with_temporary_folder run_logged "$bench_results/$result.log" discard findings env "${environment[@]}" \
        "$(bench_program "$program")" --benchmark_filter="$filter" "${@:2}" \
        --benchmark_out_format=json --benchmark_out="$bench_results/$result.json"
}

bench_program() { printf '%s\n' "$root/build/release/Benchmarks/varno_bench_$1"; }

# with_temporary_folder COMMAND...: temporary files of the command go with it, however it ends.
with_temporary_folder() (
    TMPDIR=$(mktemp -d) || return
    export TMPDIR
    trap 'rm -rf "$TMPDIR"' EXIT
    "$@"
)

forget_results() { rm -rf "$bench_results" && mkdir -p "$bench_results"; }

report_results() { Scripts/bench-report "$@" "$bench_results"; }

# describe_measurement LOAD: the average number of programs that ran in the minute before.
describe_measurement() {
    printf '%s, commit %s. %s; load before: %s. Built by %s, Release; the literal evaluation with -O2.\n' \
        "$(date -u '+%Y-%m-%d %H:%M UTC')" "$(commit)" "$(describe_machine)" "$1" "$(g++ --version | head -n 1)"
}

# measure_matching REGEX OPTIONS...: in every program that has such cases.
measure_matching() {
    local program path found=no status=0
    for program in routine settings render model editor plugin; do
        path=$(bench_program "$program")
        [[ -n $("$path" --benchmark_list_tests --benchmark_filter="$1" 2>/dev/null) ]] || continue
        found=yes
        with_temporary_folder "$path" --benchmark_filter="$1" "${@:2}" || status=1
    done
    [[ $found == yes ]] || {
        say "no measurement matches '$1'"
        status=1
    }
    return "$status"
}

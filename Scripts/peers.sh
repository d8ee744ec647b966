# shellcheck shell=bash
# Compares the LV2 effect with those of others. Like all measurements, not a part of the tests.

peers_usage() {
    cat <<'END'
usage: ./run bench-peers

Installs comparable effects with apt, runs each of them and Varno-S over the same music in one process and in random
turn, prints what a frame costs, and writes the table into docs/performance.md. It takes about four minutes on a quiet
machine.
END
}

bench_peers_command() {
    case "$*" in
    "") measure_peers ;;
    --help) peers_usage ;;
    *) usage_error "bench-peers does not take '$*'; ./run bench-peers --help tells more" ;;
    esac
}

measure_peers() {
    need_packages program test peers && build_preset release varno_bench_peers varno_lv2_bundle &&
        only_one "measuring" "$root/build/bench.lock" in_root compare_with_peers
}

compare_with_peers() {
    local load bench_results=$root/build/bench-peers
    load=$(cut -d ' ' -f 1 /proc/loadavg)
    forget_results && measure peers peers . LV2_PATH="$root/build/release/lv2:/usr/lib/lv2" &&
        Scripts/peers-report --document "$bench_document" --processor "$(processor)" --machine "$(describe_measurement "$load")" "$bench_results" &&
        say "the table is in $bench_document"
}

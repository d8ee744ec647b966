# shellcheck shell=bash
# What each step of ./run test does. (How steps are run and counted: steps.sh.)

# Logs and reports of the steps.
checks=$root/build/checks

quick_steps=(format guards includes comments text shell gcc)
lint_steps=(format guards includes comments text shell headers tidy)
default_steps=(format guards includes comments text shell scripts 'tidy&' gcc headers asan-ubsan tsan hosts)
full_steps=("${default_steps[@]}" clang sources tidy-tests coverage aarch64 libcxx windows fetch "$other_release"
    packages "packages-${other_release#debian-}" validate helgrind long long-threads)

# Steps whose result depends on the version of a tool. Where Scripts/packages.txt has the tool for another release alone,
# these steps are left out.
declare -A step_tool=([format]=clang-format-14 [tidy]=clang-tidy-14 [tidy-tests]=clang-tidy-14)

declare -A step_title=(
    [format]="every C++ file is laid out as clang-format 14 does"
    [guards]="every header is guarded by a name made of its path"
    [includes]="no include is against the direction of the layers"
    [comments]="every interface method states its contract and its thread"
    [text]="no machine paths, left-overs, binaries, stray blanks"
    [shell]="shellcheck finds nothing in the scripts"
    [scripts]="the tests of ./run and of the checks of the code"
    [gcc]="all tests of the product, gcc, Release"
    [headers]="every public header compiles alone"
    [clang]="all tests of the product, clang, Release"
    [tidy]="clang-tidy finds nothing in the product, the host and the program"
    [sources]="every source compiles alone"
    [tidy-tests]="clang-tidy finds nothing in the tests and the measurements"
    [asan-ubsan]="all tests of the product under the address and undefined-behaviour sanitizers"
    [tsan]="the threaded tests under the thread sanitizer"
    [hosts]="LV2 and CLAP hosts and JACK, as Debian has them, load the effect and give the samples of its own program; Dask, parallel and Slurm share a batch"
    [coverage]="line coverage of Interfaces, Libs and Source"
    [aarch64]="the tests of the signal path for 64-bit ARM (NEON), cross-compiled, under qemu"
    [libcxx]="the tests of signal path, library layer and data model, clang with LLVM's standard library"
    [windows]="the effect without its editor, host and CLAP plug-ins for 64-bit Windows, cross-compiled: under wine the bits of this system"
    [fetch]="the source of VSTGUI is fetched into an empty cache and is the pinned one"
    [debian-12]="Debian 12, made in a folder: the bare system renders with ./run and passes ./run test --quick"
    [debian-13]="Debian 13, made in a folder: the bare system renders with ./run and passes ./run test --quick"
    [packages]="packages and archive: twice the same bytes, nothing for lintian to find, in use on a bare Debian and removed without a rest"
    [packages-12]="the packages made on Debian 12: in use on a bare Debian 12 and removed without a rest"
    [packages-13]="the packages made on Debian 13: in use on a bare Debian 13 and removed without a rest"
    [helgrind]="instances that process beside a main thread, 5,000 blocks, under helgrind, which finds a planted race"
    [validate]="module, LV2 bundle and CLAP plug-ins pass the full level of varno validate"
    [long]="all tests of the product with 50 times the usual work"
    [long-threads]="the threaded tests under the thread sanitizer with 50 times the usual work"
)

# The folders that hold C++ of this project, as far as they are there.
cpp_folders() {
    find "$root" -mindepth 1 \( -path "$root/build" -o -name '.*' \) -prune -o \
        -type f \( -name '*.h' -o -name '*.cpp' -o -name '*.mm' \) -printf '%P\n' | cut -d/ -f1 | sort -u
}

has_tool_of() { [[ -z ${step_tool[$1]-} ]] || command -v "${step_tool[$1]}" >/dev/null; }

cpp_files() {
    local folders
    mapfile -t folders < <(cpp_folders)
    find "${folders[@]}" -type f \( -name '*.h' -o -name '*.cpp' -o -name '*.mm' \) -print0
}

# lint COMMAND...: a check that prints its findings.
lint() { run_logged "$step_log" discard findings "$@"; }

findings() { head -n 100 "$1"; }

step_format() { lint each_cpp_file "${step_tool[format]}" --style=file --dry-run -Werror; }
step_guards() { lint Scripts/check-guards .; }
step_includes() { lint Scripts/check-includes .; }
step_comments() { lint Scripts/check-interface-comments Interfaces; }
step_text() { lint Scripts/check-text .; }
step_shell() { lint shellcheck --external-sources --check-sourced run .ci/run Scripts/draw-pictures Scripts/fetch-vstgui Scripts/make-debian Scripts/manual-html Scripts/try-packages \
    Scripts/use-packages examples/batch/slurm-batch.sh; }
step_headers() { build_preset release varno_headers; }
step_tidy() {
    local folders
    mapfile -t folders < <(cpp_folders | grep -vxF -e Tests -e Benchmarks)
    run_tidy "${folders[@]}"
}
step_sources() {
    local folders
    mapfile -t folders < <(cpp_folders)
    run_tidy --compile "${folders[@]}"
}
# Tests are most of the code and have few of the findings: checking them takes too long for every day.
step_tidy-tests() {
    local folders
    mapfile -t folders < <(cpp_folders | grep -xF -e Tests -e Benchmarks)
    run_tidy "${folders[@]}"
}

# run_tidy [--compile] FOLDER...
run_tidy() {
    local options=()
    [[ $1 != --* ]] || { options=("$1") && shift; }
    # Nothing is compiled: what is brought up to date is the compilation database.
    build_preset tidy build.ninja &&
        run_logged "$step_log" tidy_progress tidy_reason Scripts/tidy "${options[@]}" build/tidy "$@"
}

tidy_progress() {
    local line
    while IFS= read -r line; do
        ! on_terminal || [[ $line != *": clean" ]] || progress_line "run: clang-tidy $line"
    done
}

tidy_reason() { grep -v ': clean$' "$1" | head -n 100; }

each_cpp_file() { cpp_files | xargs -0 -r -n 20 -P "$(nproc)" "$@"; }

# They run no code of the product: once is enough, and not at every change of the product.
step_scripts() { build_preset release build.ninja && run_tests release --label-regex "$scripts_label"; }
step_gcc() { build_preset release all && run_tests release --label-exclude "$scripts_label"; }
step_clang() { build_preset clang all && run_tests clang --label-exclude "$scripts_label"; }
step_asan-ubsan() { build_preset asan-ubsan all && run_tests asan-ubsan --label-exclude "$scripts_label"; }
step_tsan() { build_preset tsan threaded_tests && run_tests tsan --label-regex "$threaded_label"; }
step_helgrind() { build_preset helgrind varno_library_at_once && run_tests helgrind --label-regex '^test_helgrind$'; }
step_validate() {
    build_preset release varno Varno-S varno_lv2_bundle varno_clap_folder varno_test_locales && lint validate_plugins
}
validate_plugins() {
    local plugin status=0
    for plugin in Varno-S.aaxplugin lv2/varno-s.lv2 clap/varno-s/varno-s.clap; do
        LOCPATH=$root/build/release/Tests/Apps/varno/Validate/locales \
            build/release/Apps/varno/varno validate --level full "build/release/$plugin" || status=1
    done
    return "$status"
}
step_long() { build_preset release all && VARNO_TEST_SCALE=$long_scale run_tests release --label-exclude "$scripts_label"; }
step_long-threads() {
    build_preset tsan threaded_tests && VARNO_TEST_SCALE=$long_scale run_tests tsan --label-regex "$threaded_label"
}
step_hosts() { build_preset release varno Varno-S Slow varno_lv2_bundle varno_clap_folder && run_hosts; }
step_coverage() {
    build_preset coverage all && forget_coverage &&
        run_tests coverage --label-exclude "$scripts_label|$program_label" && measure_coverage
}
step_aarch64() { can_run_aarch64 && build_preset aarch64 all && run_tests aarch64; }

step_libcxx() { build_preset libcxx all && run_tests libcxx; }

step_windows() {
    can_run_windows && build_preset release varno_bits_here && build_preset windows all && run_tests windows
}

step_fetch() {
    local cache=$checks/fetch-cache
    rm -rf "$cache"
    lint env XDG_CACHE_HOME="$cache" Scripts/fetch-vstgui
}

step_debian-12() { lint Scripts/make-debian 12 "$root/build"; }
step_debian-13() { lint Scripts/make-debian 13 "$root/build"; }
step_packages() { make_packages >/dev/null && check_packages; }
step_packages-12() { lint Scripts/try-packages 12 "$root/build"; }
step_packages-13() { lint Scripts/try-packages 13 "$root/build"; }

# Where there is no apt, they are not installed.
can_run_aarch64() {
    local command
    for command in aarch64-linux-gnu-g++ qemu-aarch64; do
        command -v "$command" >/dev/null || {
            say "cannot build and run for 64-bit ARM: there is no $command"
            return 1
        }
    done
}

can_run_windows() {
    local command
    [[ $(uname -m) == x86_64 ]] || {
        say "cannot build and run for Windows: this machine is $(uname -m), and the programs are for x86_64"
        return 1
    }
    for command in x86_64-w64-mingw32-g++-posix /usr/lib/wine/wine64; do
        command -v "$command" >/dev/null || {
            say "cannot build and run for Windows: there is no $command"
            return 1
        }
    done
}

scripts_label='^test_scripts$'
# Tests that run the program as a user does. They limit its files and truncate its module, with which a build that
# writes line counts fails, and they add nothing to the measured share.
program_label='^test_apps_(varno|render|play)$'
# Programs that start threads of their own to find races are named so.
threaded_label='_threaded$'
# How many times the usual work the long runs do.
long_scale=50

# run_tests PRESET [CTEST OPTIONS...]: one test more at a time than there are processors, since those of windows wait for
# timers for half of their time.
run_tests() {
    local preset=$1 cases=${step_report%.xml}-cases status=0
    shift
    rm -rf "$cases"
    choose_prefix "$preset"
    GTEST_BRIEF=1 GTEST_OUTPUT=xml:$cases/ run_logged "$step_log" ctest_progress ctest_reason "${prefix[@]}" \
        ctest --test-dir "build/$preset" --no-tests=error --parallel $(($(nproc) + 1)) --timeout 3600 \
        --output-on-failure --output-junit "$step_report" "$@" || status=$?
    [[ ! -f $step_report ]] || Scripts/report-cases "$step_report" "$cases"
    return "$status"
}

ctest_progress() {
    local line
    while IFS= read -r line; do
        ! on_terminal || [[ ! $line =~ ^\ *[0-9]+/[0-9]+\ Test ]] || progress_line "run: testing $line"
    done
}

run_hosts() {
    run_logged "$step_log" ctest_progress ctest_reason Tests/ForeignHosts/run --build "$root/build/release" \
        --results "$checks/hosts" --report "$step_report"
}

# What is left when the tests that passed are taken out.
ctest_reason() { grep -vE '^ *(Start +[0-9]+:|[0-9]+/[0-9]+ Test .* Passed )' "$1" | head -n 200; }

# Removes the counts of earlier runs, and the files of sources that no longer exist: gcovr fails with both.
forget_coverage() {
    local notes
    find "$root/build/coverage" -name '*.gcda' -delete
    ninja -C "$root/build/coverage" -t cleandead >/dev/null
    find "$root/build/coverage" -name '*.gcno' -print0 | while IFS= read -r -d '' notes; do
        [[ -f ${notes%.gcno}.o ]] || rm "$notes"
    done
}

# The least share of lines, in percent, that the tests must execute.
least_coverage=95
coverage_table=$checks/coverage.txt

measure_coverage() {
    run_logged "$checks/gcovr.log" discard findings gcovr --root "$root" --object-directory "$root/build/coverage" \
        -j "$(nproc)" --filter Interfaces/ --filter Libs/ --filter Source/ \
        --txt "$coverage_table" --fail-under-line "$least_coverage"
}

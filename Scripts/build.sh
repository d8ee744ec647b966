# shellcheck shell=bash
# Configures and builds a preset of CMakePresets.json below build/.

# build_preset PRESET TARGET...: brings the targets up to date.
build_preset() {
    alone_in "$1" configure_and_build "$@"
}

# alone_in PRESET COMMAND...: runs the command while no other ./run builds the preset.
alone_in() {
    only_one "building" "$root/build/$1.lock" "${@:2}"
}

configure_and_build() {
    local preset=$1
    shift
    local folder=$root/build/$preset log=$root/build/$preset.log
    cd "$root" || return
    # A cache of compilations is used where there is one.
    ! command -v ccache >/dev/null || export CMAKE_CXX_COMPILER_LAUNCHER=ccache
    need_vstgui || return
    if must_configure "$folder"; then
        say "configuring ($preset)"
        run_logged "$log" discard configure_reason cmake --fresh --preset "$preset" || return
    fi
    build_title="building ($preset)"
    choose_prefix "$preset"
    NINJA_STATUS='[%f/%t] ' run_logged "$log" build_progress build_reason \
        "${prefix[@]}" cmake --build "build/$preset" --parallel "$(nproc)" --target "$@"
}

# Fetched before cmake would do so, which prints nothing meanwhile.
need_vstgui() {
    [[ -z ${VSTGUI_SOURCE_DIR-} ]] || return 0
    local options=()
    [[ $may_install == yes ]] || options=(--cached)
    Scripts/fetch-vstgui "${options[@]}" >/dev/null
}

# choose_prefix PRESET: sets the words that go before a command that runs programs of the preset. Those of the
# sanitizers of gcc 12 and clang 14 fail now and then where the kernel randomises addresses by more than 28 bits, so
# they go without. (A build runs programs too: it runs the tests to list their names.)
choose_prefix() {
    prefix=()
    [[ ! $1 =~ san|fuzz ]] || ! setarch --addr-no-randomize true 2>/dev/null || prefix=(setarch --addr-no-randomize)
}

# Never configured, a preset that changed, or a folder that was moved here from another place. (What changes in
# the CMake files themselves, the build notices.)
must_configure() {
    [[ ! -f $1/build.ninja || $root/CMakePresets.json -nt $1/CMakeCache.txt ]] ||
        ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$1/CMakeCache.txt"
}

discard() { cat >/dev/null; }

# Prints nothing while there is nothing to build, and the progress from the first step on.
build_progress() {
    local line done_steps all_steps quarter=0
    while IFS= read -r line; do
        [[ $line =~ ^\[([0-9]+)/([0-9]+)\]\ (.*) && ${BASH_REMATCH[3]} != Re-* ]] || continue
        done_steps=${BASH_REMATCH[1]} all_steps=${BASH_REMATCH[2]}
        if on_terminal; then
            progress_line "run: $build_title $line"
        elif ((quarter == 0 || done_steps * 4 >= all_steps * quarter)); then
            say "$build_title [$done_steps/$all_steps]"
            quarter=$((done_steps * 4 / all_steps + 1))
        fi
    done
}

configure_reason() { grep -A 30 'CMake Error' "$1" | head -n 40 || tail -n 20 "$1"; }

# From the first failed step, without the progress of those that ran beside it.
build_reason() {
    local lines
    lines=$(sed -n '/^FAILED: /,$p' "$1" | grep -v '^\[' | head -n 60) || true
    [[ -n $lines ]] || lines=$(tail -n 20 "$1")
    printf '%s\n' "$lines"
}

# shellcheck shell=bash
# The commands test, lint, coverage and format.

# The one of the two supported releases that this machine does not run.
other_release=debian-13
[[ $(release) != debian-13 ]] || other_release=debian-12

source "$root/Scripts/checks.sh"
source "$root/Scripts/steps.sh"
source "$root/Scripts/verification.sh"

test_command() {
    case ${1-} in
    "") check "${default_steps[@]}" ;;
    --quick) check "${quick_steps[@]}" ;;
    --hosts) check hosts ;;
    --full) check_and_record "${full_steps[@]}" ;;
    --list) list_steps ;;
    *) require_steps "$@" && check_all "$@" ;;
    esac
}

lint_command() {
    (($# == 0)) || usage_error "lint takes no arguments; ./run test STEP... runs single steps"
    check "${lint_steps[@]}"
}

coverage_command() {
    (($# == 0)) || usage_error "coverage takes no arguments"
    local status=0
    rm -f "$coverage_table"
    check coverage || status=$?
    [[ ! -f $coverage_table ]] || cat "$coverage_table"
    return "$status"
}

format_command() {
    (($# == 0)) || usage_error "format takes no arguments"
    need_packages test || return
    has_tool_of format || fail "format needs ${step_tool[format]}, which Debian 12 has"
    cd "$root" && each_cpp_file "${step_tool[format]}" --style=file -i
}

usage_error() {
    say "$@"
    exit 2
}

list_steps() {
    local name
    for name in "${full_steps[@]%&}"; do printf '%-14s %s\n' "$name" "${step_title[$name]}"; done
}

require_steps() {
    local name
    for name in "$@"; do
        [[ -n ${step_title[$name]-} ]] || usage_error "'$name' is no step of the tests; there are: ${full_steps[*]%&}"
    done
}

# need_packages_of STEP...: those of another processor, another standard library, another system, valgrind and foreign hosts
# only where they are asked for.
need_packages_of() {
    local purposes=(program test)
    [[ " $* " != *" aarch64 "* ]] || purposes+=(aarch64)
    [[ " $* " != *" libcxx "* ]] || purposes+=(libcxx)
    # For other processors there is no wine that runs its programs; the step itself refuses there.
    [[ " $* " != *" windows "* || $(uname -m) != x86_64 ]] || purposes+=(windows)
    [[ " $* " != *" helgrind "* ]] || purposes+=(helgrind)
    [[ " $* " != *" hosts "* ]] || purposes+=(hosts)
    [[ " $* " != *" debian-1"* && " $* " != *" packages"* ]] || purposes+=(release)
    [[ " $* " != *" packages "* ]] || purposes+=(package)
    need_packages "${purposes[@]}"
}

check() {
    need_packages_of "$@" && only_one "testing" "$root/build/checks.lock" in_root run_steps "$@"
}

# check_all STEP...: the same where none of the steps may be left out.
check_all() {
    local name
    need_packages_of "$@" || return
    for name in "$@"; do
        has_tool_of "$name" || fail "the step '$name' needs ${step_tool[$name]}, which Debian 12 has"
    done
    check "$@"
}

check_and_record() {
    need_packages_of "$@" && only_one "testing" "$root/build/checks.lock" in_root run_and_record "$@"
}

run_and_record() {
    local status=0
    run_steps "$@" || status=$?
    record_verification
    return "$status"
}

in_root() {
    cd "$root" && PYTHONDONTWRITEBYTECODE=1 "$@"
}

# shellcheck shell=bash
# Installs with apt what Scripts/packages.txt lists and this machine lacks.

# The release that this machine runs, for instance debian-12; nothing where the system does not state one.
# shellcheck source=/dev/null # there on every such system
release() { (. /etc/os-release && printf '%s-%s' "${ID-}" "${VERSION_ID-}") 2>/dev/null; }

# packages_for PURPOSE...: the packages of these purposes on this release, one per line.
packages_for() {
    local line purpose="" this_release
    this_release=$(release)
    while IFS= read -r line; do
        case $line in
        "" | "#"*) ;;
        # What is for another release keeps its name, which is no purpose.
        "["*"]")
            purpose=${line:1:-1}
            purpose=${purpose%" $this_release"}
            ;;
        *) [[ " $* " != *" $purpose "* ]] || printf '%s\n' "$line" ;;
        esac
    done <"$root/Scripts/packages.txt"
}

# missing_packages PURPOSE...: those of them that are not installed.
missing_packages() {
    local wanted
    mapfile -t wanted < <(packages_for "$@")
    comm -23 <(printf '%s\n' "${wanted[@]}" | sort -u) \
        <(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "${wanted[@]}" 2>/dev/null |
            sed -n 's/ installed$//p' | sort -u)
}

# On systems other than Debian and its derivatives, users install the packages themselves.
has_apt() { command -v apt-get >/dev/null && command -v dpkg-query >/dev/null; }

# need_packages PURPOSE...: makes sure that they are there.
need_packages() {
    local missing
    has_apt || return 0
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]} > 0)) || return 0
    [[ $may_install == yes ]] || fail "these packages are missing (and --no-install is given): ${missing[*]}"
    only_one "installing packages" "$root/build/run-install.lock" install_packages "$@"
}

install_packages() {
    local missing as_root=()
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]} > 0)) || return 0
    if ((EUID != 0)); then
        command -v sudo >/dev/null || fail "installing needs root and there is no sudo; as root: apt-get install ${missing[*]}"
        as_root=(sudo)
        sudo -v || fail "sudo refused; as root: apt-get install ${missing[*]}"
    fi
    mask_services "${missing[@]}" || return
    say "installing ${missing[*]}"
    compgen -G '/var/lib/apt/lists/*_Packages*' >/dev/null || update_package_lists || return
    # The usual reason of a failure is an outdated list, which names versions that the archive no longer has.
    apt_get install -y --no-install-recommends "${missing[@]}" || {
        say "trying again with fresh package lists"
        update_package_lists && apt_get install -y --no-install-recommends "${missing[@]}"
    }
}

# Packages that start a service of their name when they are installed, and at each start of the system.
packages_with_service=(munge slurmctld slurmd)

# mask_services PACKAGE...: keeps the services of those that will be installed off, whatever their installation asks for.
# The tests start what they need by themselves. A package that is there already keeps its service.
mask_services() {
    local package services=()
    command -v systemctl >/dev/null || return 0
    for package in "${packages_with_service[@]}"; do
        [[ " $* " != *" $package "* ]] || services+=("$package.service")
    done
    ((${#services[@]} > 0)) || return 0
    say "these services stay off until systemctl unmask: ${services[*]}"
    run_logged "$root/build/run-install.log" discard apt_reason "${as_root[@]}" systemctl mask "${services[@]}"
}

update_package_lists() {
    say "fetching the package lists"
    apt_get update
}

apt_get() {
    run_logged "$root/build/run-install.log" apt_progress apt_reason \
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300 "$@"
}

apt_progress() {
    local line
    while IFS= read -r line; do
        [[ $line =~ ^(Get:|Unpacking|Setting up) ]] || continue
        ! on_terminal || progress_line "$line"
    done
}

apt_reason() { grep -E '^(E|Err|W|dpkg)[:0-9]' "$1" | tail -n 10 || tail -n 10 "$1"; }

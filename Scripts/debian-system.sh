# shellcheck shell=bash
# A bare release of Debian in a folder, for the scripts that try something there. Its mounts are its own: none is left,
# however the script ends.
# Set before: root, the tree. Set here: number, the release's; system, its folder; packages, that of what it fetched,
# which remains.

source "$root/Scripts/mirrors.sh"

say() { printf 'run: %s\n' "$*" >&2; }

# choose_release NUMBER FOLDER SYSTEM USAGE: the system is FOLDER/SYSTEM, the packages are FOLDER/debian-NUMBER-packages.
choose_release() {
    number=$1
    case $number in
    12) suite=bookworm ;;
    13) suite=trixie ;;
    *) suite="" ;;
    esac
    [[ -n $suite && -n $2 ]] || {
        say "usage: $4"
        exit 2
    }
    system=$2/$3 packages=$2/debian-$number-packages
}

# need_root STEP: to mount and to change the root folder.
need_root() {
    ((EUID == 0)) || {
        say "making Debian $number in a folder needs root, to mount and to change the root folder: sudo ./run test $1"
        exit 1
    }
}

# What it installs is fetched once: the cache of packages is in the system while it is made and a mount later.
make_system() {
    local mirror
    mirror=$(debian_mirrors | head -n 1) || true
    rm -rf --one-file-system "$system"
    mkdir -p "$packages"
    # shellcheck disable=SC2016 # mmdebstrap's shell expands this
    mmdebstrap --quiet --variant=apt --skip=download/empty --skip=essential/unlink \
        --setup-hook='mkdir -p "$1/var/cache/apt/archives"' \
        --setup-hook="sync-in '$packages' /var/cache/apt/archives" \
        --customize-hook="sync-out /var/cache/apt/archives '$packages'" \
        "$suite" "$system" ${mirror:+"$mirror"}
}

copy_tree() {
    mkdir "$system/varno"
    tar -C "$root" --exclude=./build --exclude=./.git -c . | tar -C "$system/varno" -x --no-same-owner
}

# in_system COMMAND: runs it with bash in the system, where this tree may have been copied to. Its processes end when the
# script does.
process=""
trap '[[ -z $process ]] || kill -KILL "$process" 2>/dev/null || true' EXIT
trap 'exit 1' HUP INT TERM
in_system() {
    # shellcheck disable=SC2016 # expanded by the shell that mounts
    unshare --mount --propagation private --pid --fork --kill-child bash -euc '
        mount -t proc proc "$1/proc"
        mount --rbind /dev "$1/dev"
        # What programs of this system share there is not for those of another.
        mount -t tmpfs -o mode=1777 tmpfs "$1/dev/shm"
        mount --bind "$2" "$1/var/cache/apt/archives"
        exec chroot "$1" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 bash -c "export HOME=~root && cd && $3"
    ' in_system "$system" "$packages" "$1" &
    process=$!
    wait "$process"
    process=""
}

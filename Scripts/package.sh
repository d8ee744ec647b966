# shellcheck shell=bash
# Packages for those who install the effect: Debian's, for the release that this runs on, and an archive that can be
# unpacked anywhere. debhelper makes the packages and not CPack, since it does what Debian asks of every package:
# dependencies by the symbols that are used, symbols for debugging apart, compressed documents, the same bytes each time.

source "$root/Scripts/machine.sh"

packages=$root/build/packages

package_usage() {
    cat <<'END'
usage: ./run package [--record]

Builds into build/packages, for the Debian release that this machine runs:

  varno_*.deb           the program without its window, with the factory presets, manual page and completion
  varno-editor_*.deb    its window, the module bundle, an entry in menus
  varno-s-lv2_*.deb     the plug-ins for LV2 hosts
  varno-s-clap_*.deb    the plug-ins for CLAP hosts
  python3-varno_*.deb   the effect for Python, of the version that is this release's default
  varno-doc_*.deb       the manual
  varno-s-*.tar.xz      all of this in one folder, which works wherever it is unpacked; the Python package in it is for
                        the same version of Python

The same sources make the same bytes in every folder.

  --record    also writes into docs/packages.md what each package depends on, and the size and the libraries of each
              binary in them
END
}

package_command() {
    case "$#:${1-}" in
    1:--help) package_usage ;;
    1:--record) make_packages && record_packages ;;
    0:) make_packages ;;
    *) usage_error "package does not take '$*'; ./run package --help tells more" ;;
    esac
}

make_packages() {
    need_packages program package || return
    rm -rf "$packages" "$root/build/package" && mkdir -p "$packages" || return
    # A cache of compilations may give objects that were made in another folder, or name files by other paths.
    local -x CCACHE_DISABLE=1
    make_debian_packages && make_archive && printf '%s\n' "$packages"/*.deb "$packages"/*.tar.xz
}

# The section of another release is written where that one runs.
record_packages() {
    "$root/Scripts/packages-report" --document "$root/docs/packages.md" --made "$(date -u +%Y-%m-%d), commit $(commit)." \
        "$packages" >/dev/null
}

# The names of the packages, one per line.
package_names() { sed -n 's/^Package: //p' "$root/Packaging/debian/control"; }

project_version() { sed -n 's/^project(Varno-S VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt"; }

# The day of a version by the list of changes; empty where it has none yet.
release_day() { sed -n "s/^## \\[${1//./\\.}\\] - \\([0-9]\\{4\\}-[0-9][0-9]-[0-9][0-9]\\)\$/\\1/p" "$root/CHANGELOG.md"; }

# The time that files in packages have, in seconds since 1970: what the environment states, as for all reproducible
# builds; else the day of the release; before it, the last change of the sources.
source_time() {
    local day
    day=$(release_day "$(project_version)")
    if [[ -n ${SOURCE_DATE_EPOCH-} ]]; then
        printf '%s\n' "$SOURCE_DATE_EPOCH"
    elif [[ -n $day ]]; then
        date --utc --date="$day" +%s
    else
        git -C "$root" log -1 --format=%ct 2>/dev/null || stat --format=%Y "$root/CHANGELOG.md"
    fi
}

make_debian_packages() {
    local version folder this_release
    this_release=$(release)
    version=$(project_version)+${this_release/debian-/deb}
    folder=$root/build/package/varno-s-$version
    mkdir -p "$folder" && copy_sources "$folder" || return
    cp -R "$root/Packaging/debian" "$folder/debian" &&
        printf 'varno-s (%s) unstable; urgency=medium\n\n  * See changelog.gz for what has changed.\n\n -- %s  %s\n' "$version" \
            "$(sed -n 's/^Maintainer: //p' "$folder/debian/control")" "$(date --utc --rfc-email --date="@$(source_time)")" \
            >"$folder/debian/changelog" || return
    # debhelper sets later times to this one and keeps earlier ones, which differ by checkout.
    find "$folder" -exec touch --no-dereference --date="@$(source_time)" {} + || return
    cd "$root" && need_vstgui || return
    VSTGUI_SOURCE_DIR=${VSTGUI_SOURCE_DIR:-$(Scripts/fetch-vstgui)} || return
    export VSTGUI_SOURCE_DIR
    cd "$folder" || return
    build_title="building packages"
    NINJA_STATUS='[%f/%t] ' run_logged "$root/build/package.log" build_progress tail_reason \
        dpkg-buildpackage --build=binary --no-sign --no-check-builddeps || return
    mv ../*.deb "$packages/"
}

# What git keeps or would keep, or, where the sources came without it, everything but what was built.
copy_sources() {
    cd "$root" || return
    if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
        git ls-files -z --cached --others --exclude-standard | tar --create --null --files-from=- | tar --extract --directory="$1"
    else
        tar --create --exclude=./build . | tar --extract --directory="$1"
    fi
}

# Built anew, since another build's objects may be of a cache.
make_archive() {
    local name folder built=$root/build/package/program log=$root/build/package-archive.log
    name=varno-s-$(project_version)-linux-$(uname -m)
    folder=$root/build/package/$name
    cd "$root" && need_vstgui || return
    run_logged "$log" discard configure_reason cmake --preset program -B "$built" -DVARNO_PYTHON=ON || return
    build_title="building the archive"
    NINJA_STATUS='[%f/%t] ' run_logged "$log" build_progress build_reason \
        cmake --build "$built" --parallel "$(nproc)" --target varno_installed || return
    run_logged "$log" discard tail_reason cmake --install "$built" --strip --prefix "$folder" &&
        "$root/Scripts/manual-html" "$root/docs" "$folder/share/doc/Varno-S/html" &&
        tar --create --xz --sort=name --owner=0 --group=0 --numeric-owner --mode=u=rwX,go=rX --mtime="@$(source_time)" \
            --directory="$root/build/package" --file="$packages/$name.tar.xz" "$name"
}

tail_reason() { tail -n 40 "$1"; }

# check_packages: what was made, judged. Another build, in another folder with a longer name, gives the same bytes; lintian
# finds nothing; the packages work on a bare Debian and leave nothing there.
check_packages() {
    local this_release
    this_release=$(release)
    lint lintian --allow-root --fail-on error,warning "$packages"/*.deb &&
        lint "$root/Scripts/try-packages" "${this_release#debian-}" "$root/build" "$packages" &&
        make_again_and_compare
}

# The folder is outside of this tree, and goes however this ends.
make_again_and_compare() (
    elsewhere=$(mktemp -d "${TMPDIR:-/tmp}/varno-packages.XXXXXX") || return
    trap 'rm -rf "$elsewhere"' EXIT
    again=$elsewhere/in-a-folder-whose-name-is-longer
    mkdir "$again" && copy_sources "$again" &&
        lint env SOURCE_DATE_EPOCH="$(source_time)" "$again/run" --no-install package &&
        lint diff --recursive --brief "$packages" "$again/build/packages"
)

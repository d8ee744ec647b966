# shellcheck shell=bash
# Packages for those who install the effect: Debian's, for the release that this runs on, and an archive that can be
# unpacked anywhere. debhelper makes the packages and not CPack, since it does what Debian asks of every package:
# dependencies by the symbols that are used, symbols for debugging apart, compressed documents, the same bytes each time.

packages=$root/build/packages

package_usage() {
    cat <<'END'
usage: ./run package

Builds into build/packages, for the Debian release that this machine runs:

  varno_*.deb           the program without its window, with the factory presets, manual page and completion
  varno-editor_*.deb    its window, the module bundle, an entry in menus
  varno-s-lv2_*.deb     the plug-ins for LV2 hosts
  varno-s-clap_*.deb    the plug-ins for CLAP hosts
  varno-doc_*.deb       the manual
  varno-s-*.tar.xz      program, module and plug-ins in one folder, which works wherever it is unpacked

The same sources make the same bytes in every folder.
END
}

package_command() {
    case "$#:${1-}" in
    1:--help) package_usage ;;
    0:) make_packages ;;
    *) usage_error "package takes no arguments; ./run package --help tells more" ;;
    esac
}

make_packages() {
    need_packages program package || return
    rm -rf "$packages" && mkdir -p "$packages" || return
    make_debian_packages && make_archive && printf '%s\n' "$packages"/*.deb "$packages"/*.tar.xz
}

project_version() { sed -n 's/^project(Varno-S VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt"; }

# The time that files in packages have: that of the last change of the sources, in seconds since 1970.
source_time() { git -C "$root" log -1 --format=%ct 2>/dev/null || stat --format=%Y "$root/CHANGELOG.md"; }

make_debian_packages() {
    local version folder this_release
    this_release=$(release)
    version=$(project_version)+${this_release/debian-/deb}
    folder=$root/build/package/varno-s-$version
    rm -rf "$root/build/package" && mkdir -p "$folder" && copy_sources "$folder" || return
    cp -R "$root/Packaging/debian" "$folder/debian" &&
        printf 'varno-s (%s) unstable; urgency=medium\n\n  * See changelog.gz for what has changed.\n\n -- %s  %s\n' "$version" \
            "$(sed -n 's/^Maintainer: //p' "$folder/debian/control")" "$(date --utc --rfc-email --date="@$(source_time)")" \
            >"$folder/debian/changelog" || return
    cd "$root" && need_vstgui || return
    VSTGUI_SOURCE_DIR=${VSTGUI_SOURCE_DIR:-$(Scripts/fetch-vstgui)} || return
    # Tools that debhelper calls get a home folder of their own.
    ! command -v ccache >/dev/null || export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_DIR=${CCACHE_DIR:-$(ccache --get-config cache_dir)}
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

make_archive() {
    build_preset program varno Varno-S varno_lv2_bundle varno_documents || return
    local name folder
    name=varno-s-$(project_version)-linux-$(uname -m)
    folder=$root/build/package/$name
    run_logged "$root/build/package-install.log" discard tail_reason \
        cmake --install "$root/build/program" --strip --prefix "$folder" &&
        "$root/Scripts/manual-html" "$root/docs" "$folder/share/doc/Varno-S/html" &&
        tar --create --xz --sort=name --owner=0 --group=0 --numeric-owner --mode=u=rwX,go=rX --mtime="@$(source_time)" \
            --directory="$root/build/package" --file="$packages/$name.tar.xz" "$name"
}

tail_reason() { tail -n 40 "$1"; }

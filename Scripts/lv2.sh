# shellcheck shell=bash
# Puts the LV2 bundle where hosts look for it.

lv2_usage() {
    cat <<'END'
usage: ./run install-lv2 [FOLDER]

Builds varno-s.lv2 and copies it into FOLDER, by default ~/.lv2, where every LV2 host looks. A bundle that is there is
replaced, once the new one is complete. To remove it, delete FOLDER/varno-s.lv2.
END
}

install_lv2_command() {
    case "$#:${1-}" in
    1:--help) lv2_usage ;;
    0:) install_lv2 "$HOME/.lv2" ;;
    1:-* | 1: | [2-9]*) usage_error "install-lv2 takes one folder; ./run install-lv2 --help tells more" ;;
    *) install_lv2 "$1" ;;
    esac
}

install_lv2() {
    need_packages program && build_preset program varno_lv2_bundle && replace_bundle "$1"
}

# replace_bundle FOLDER: the new bundle is complete before the old one is removed.
replace_bundle() {
    local target=$1/varno-s.lv2 fresh
    mkdir -p "$1" && fresh=$(mktemp -d "$1/.varno-s.XXXXXX") || return
    if cp -R "$root/build/program/lv2/varno-s.lv2" "$fresh/" && rm -rf "$target" && mv "$fresh/varno-s.lv2" "$target"; then
        rmdir "$fresh"
        printf '%s\n' "$target"
    else
        rm -rf "$fresh"
        fail "$target could not be written"
    fi
}

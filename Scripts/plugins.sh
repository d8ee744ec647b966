# shellcheck shell=bash
# Puts the plug-ins where hosts look for them.

lv2_usage() {
    cat <<'END'
usage: ./run install-lv2 [FOLDER]

Builds varno-s.lv2 and copies it into FOLDER, by default ~/.lv2, where every LV2 host looks. A bundle that is there is
replaced, once the new one is complete. To remove it, delete FOLDER/varno-s.lv2.
END
}

clap_usage() {
    cat <<'END'
usage: ./run install-clap [FOLDER]

Builds the folder varno-s, which holds varno-s.clap, and copies it into FOLDER, by default ~/.clap, where every CLAP host
looks, in the folders below too. One that is there is replaced, once the new one is complete. To remove it, delete
FOLDER/varno-s.
END
}

install_lv2_command() { install_plugins_command install-lv2 lv2_usage .lv2 varno_lv2_bundle lv2/varno-s.lv2 "$@"; }
install_clap_command() { install_plugins_command install-clap clap_usage .clap varno_clap_folder clap/varno-s "$@"; }

# install_plugins_command COMMAND USAGE DEFAULT TARGET BUILT [ARGUMENTS...]: DEFAULT is the user's folder where none is
# given; TARGET builds the folder build/program/BUILT.
install_plugins_command() {
    local command=$1 usage=$2 default=$3 target=$4 built=$5 folder
    shift 5
    case "$#:${1-}" in
    1:--help) "$usage" && return ;;
    0:) folder=$HOME/$default ;;
    1:-* | 1: | [2-9]*) usage_error "$command takes one folder; ./run $command --help tells more" ;;
    *) folder=$1 ;;
    esac
    need_packages program && build_preset program "$target" && replace_folder "$root/build/program/$built" "$folder"
}

# replace_folder NEW FOLDER: puts the folder NEW into FOLDER, where it is complete before an old one is removed.
replace_folder() {
    local target=$2/${1##*/} fresh
    mkdir -p "$2" && fresh=$(mktemp -d "$2/.varno-s.XXXXXX") || return
    if cp -R "$1" "$fresh/" && rm -rf "$target" && mv "$fresh/${1##*/}" "$target"; then
        rmdir "$fresh"
        printf '%s\n' "$target"
    else
        rm -rf "$fresh"
        fail "$target could not be written"
    fi
}

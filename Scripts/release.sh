# shellcheck shell=bash
# A release: everything is checked, the packages are made, and what to tag is printed. Nothing is committed, tagged or
# pushed here.

release_usage() {
    cat <<'END'
usage: ./run release [--dry-run]

Runs ./run test --full, which writes docs/verification.md and makes the packages of this Debian in build/packages and of
the other one in build/packages-NUMBER-made, and prints what to commit and to tag. It takes hours.

It refuses where something is not committed, where CHANGELOG.md has no dated section for the version of CMakeLists.txt, and
where that version is tagged already.

  --dry-run    prints the steps and what stands against the release, and does nothing
END
}

release_command() {
    case "$#:${1-}" in
    1:--help) release_usage ;;
    1:--dry-run) plan_release ;;
    0:) make_release ;;
    *) usage_error "release does not take '$*'; ./run release --help tells more" ;;
    esac
}

release_tag() { printf 'v%s\n' "$(project_version)"; }

# What stands against a release, one line each; nothing where it can be made.
release_obstacles() {
    local version changes tag
    version=$(project_version) tag=$(release_tag)
    [[ $version =~ ^[0-9]+\.[0-9]+\.[0-9]+$ ]] || printf 'CMakeLists.txt has no version of three numbers\n'
    changes=$(git -C "$root" status --porcelain 2>&1) || changes="?? $changes"
    [[ -z $changes ]] || printf 'not committed: %s\n' "$(cut -c 4- <<<"$changes" | paste -sd ' ')"
    if ! grep -qF "## [$version]" "$root/CHANGELOG.md"; then
        printf 'CHANGELOG.md has no section for %s\n' "$version"
    elif [[ -z $(release_day "$version") ]]; then
        printf 'CHANGELOG.md has no date for %s; expected a line "## [%s] - YYYY-MM-DD"\n' "$version" "$version"
    elif [[ -z $(release_changes "$version") ]]; then
        printf 'CHANGELOG.md says nothing about %s\n' "$version"
    fi
    [[ -z $(git -C "$root" tag --list "$tag") ]] || printf '%s is tagged already; expected another version in CMakeLists.txt\n' "$tag"
}

# The points of a version in the list of changes.
release_changes() { awk -v start="## [$1]" 'index($0, "## ") == 1 { inside = index($0, start) == 1; next } inside && /^- /' "$root/CHANGELOG.md"; }

plan_release() {
    local obstacles
    printf 'The release of %s:\n' "$(project_version)"
    printf '  1. ./run test --full, which takes hours: all checks, docs/verification.md, and for both releases of Debian\n'
    printf '     the archive and the packages %s\n' "$(package_names | paste -sd ' ')"
    what_to_tag 2
    mapfile -t obstacles < <(release_obstacles)
    ((${#obstacles[@]} > 0)) || return 0
    printf '\nIt would be refused:\n'
    printf '  %s\n' "${obstacles[@]}"
    return 1
}

make_release() {
    local obstacles
    mapfile -t obstacles < <(release_obstacles)
    if ((${#obstacles[@]} > 0)); then
        printf 'run: no release: %s\n' "${obstacles[@]}" >&2
        return 1
    fi
    test_command --full || fail "no release: ./run test --full has failed"
    printf '\nThe release of %s is checked. What remains:\n' "$(project_version)"
    what_to_tag 1
    printf '\nThe packages:\n'
    list_packages
}

# By their checksums; the other release's are where it was made.
list_packages() {
    find "$packages" "$root/build/packages-${other_release#debian-}-made" -type f \
        \( -name '*.deb' -o -name '*.tar.xz' \) -exec sha256sum {} + | sort -k 2
}

# what_to_tag NUMBER: the commands, as points from this number on.
what_to_tag() {
    local tag
    tag=$(release_tag)
    printf '  %d. git commit -m "Record the verification of %s" docs/verification.md\n' "$1" "$(project_version)"
    printf '  %d. git tag -a %s -m "Varno-S %s"\n' $(($1 + 1)) "$tag" "$(project_version)"
    printf '  %d. git push origin HEAD %s\n' $(($1 + 2)) "$tag"
}

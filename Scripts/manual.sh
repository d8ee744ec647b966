# shellcheck shell=bash
# The pictures of the user's documents: screenshots of the editor, one with its controls numbered, and one in a host.

pictures=$root/docs/pictures

# Some controls moved, so that a reader sees what moves.
manual_settings=(--set Gain=0.6 --set Hot=0.45 --set Atk=0.3 --set Ratio=0.5714286 --set HP=1 --set LinkSw=1)
# The loop plays so long before the picture is taken, in seconds: the meters show a drum's stroke.
manual_after=1.2

manual_command() {
    (($# == 0)) || usage_error "manual takes no arguments"
    need_packages program manual || return
    build_preset program varno Varno-S varno_artwork varno_lv2_bundle || return
    with_display draw_pictures && draw_host || return
    printf '%s\n' "$pictures"/*.png
}

draw_pictures() {
    local build=$root/build/program loop status=0
    local varno=$build/Apps/varno/varno
    mkdir -p "$pictures"
    loop=$(mktemp -d) || return
    (cd "$loop" && "$varno" render --quiet) &&
        take_picture 1 editor.png && take_picture 2 editor-2x.png &&
        "$build/Resources/Artwork/varno_artwork" --number "$pictures/editor-2x.png" "$pictures/controls.png" || status=1
    rm -rf "$loop"
    return "$status"
}

# What the test of a host took while its window showed the editor, without the empty screen around it.
draw_host() {
    local build=$root/build/program results=$root/build/program/hosts
    mkdir -p "$results"
    run_logged "$root/build/manual-host.log" discard ctest_reason "$root/Tests/ForeignHosts/run" --build "$build" \
        --results "$results" --report "$results/report.xml" test_a_dragged_knob_moves_the_port &&
        convert "$results/jalv-gtk3-dragged.png" -trim +repage "$pictures/jalv.png"
}

# take_picture SCALE NAME
take_picture() {
    "$varno" edit --scale "$1" --screenshot "$pictures/$2" --after "$manual_after" "${manual_settings[@]}" \
        "$loop/varno-demo-dry.wav"
}

# with_display COMMAND...: runs the command on an X server of its own, whatever display there is, so that the pictures
# are the same everywhere.
with_display() {
    local status=0 display_file server
    display_file=$(mktemp) || return
    Xvfb -displayfd 3 -screen 0 1600x1000x24 3>"$display_file" >"$root/build/manual-display.log" 2>&1 &
    server=$!
    while kill -0 "$server" 2>/dev/null && [[ ! -s $display_file ]]; do sleep 0.05; done
    if [[ -s $display_file ]]; then
        DISPLAY=:$(<"$display_file") "$@" || status=1
    else
        say "the X server did not start; see $root/build/manual-display.log"
        status=1
    fi
    kill "$server" 2>/dev/null
    wait "$server" 2>/dev/null
    rm -f "$display_file"
    return "$status"
}

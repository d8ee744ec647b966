# shellcheck shell=bash
# What of the documents is made: the numbers of the manual and of the presets (see
# Scripts/manual-figures and Scripts/preset-figures) and the pictures, which are
# committed (see Scripts/draw-plots, Scripts/draw-pictures and Scripts/draw-window), with
# the window of a host.

pictures=$root/docs/pictures

# Of all states of the window, which remain in build/program/window.
window_states=(changed bypassed menu typed curve)

manual_command() {
    (($# == 0)) || usage_error "manual takes no arguments"
    need_packages program manual || return
    build_preset program varno Varno-S varno_artwork varno_lv2_bundle || return
    "$root/Scripts/manual-figures" "$root/build/program/Apps/varno/varno" "$root/docs/manual.md" &&
        "$root/Scripts/preset-figures" "$root/build/program/Apps/varno/varno" "$root/docs/presets.md" &&
        "$root/Scripts/draw-plots" "$root/build/program/Apps/varno/varno" "$pictures" &&
        "$root/Scripts/draw-pictures" "$root/build/program" "$pictures" && draw_window && draw_host || return
    printf '%s\n' "$pictures"/*.png
}

draw_window() {
    local state folder=$root/build/program/window
    "$root/Scripts/draw-window" "$root/build/program" "$folder" || return
    for state in "${window_states[@]}"; do
        shrink_picture "$folder/$state.png" "$pictures/window-$state.png" || return
    done
}

# shrink_picture FILE TARGET: 256 colours are enough, and make a third of the bytes.
shrink_picture() {
    convert "$1" +repage -dither None -colors 256 -define png:format=png8 -define png:exclude-chunks=date,time "$2"
}

# What the test of a host took while its window showed the editor, without the empty screen around it.
draw_host() {
    local build=$root/build/program results=$root/build/program/hosts
    mkdir -p "$results"
    run_logged "$root/build/manual-host.log" discard ctest_reason "$root/Tests/ForeignHosts/run" --build "$build" \
        --results "$results" --report "$results/report.xml" test_a_dragged_knob_moves_the_port &&
        convert "$results/jalv-gtk3-dragged.png" -trim "$results/jalv.png" &&
        shrink_picture "$results/jalv.png" "$pictures/jalv.png"
}

# shellcheck shell=bash
# What of the documents is made: the numbers of the manual (see Scripts/manual-figures) and the pictures, which are
# committed (see Scripts/draw-pictures), with the window of a host.

pictures=$root/docs/pictures

manual_command() {
    (($# == 0)) || usage_error "manual takes no arguments"
    need_packages program manual || return
    build_preset program varno Varno-S varno_artwork varno_lv2_bundle || return
    "$root/Scripts/manual-figures" "$root/build/program/Apps/varno/varno" "$root/docs/manual.md" &&
        "$root/Scripts/draw-pictures" "$root/build/program" "$pictures" && draw_host || return
    printf '%s\n' "$pictures"/*.png
}

# What the test of a host took while its window showed the editor, without the empty screen around it.
draw_host() {
    local build=$root/build/program results=$root/build/program/hosts
    mkdir -p "$results"
    run_logged "$root/build/manual-host.log" discard ctest_reason "$root/Tests/ForeignHosts/run" --build "$build" \
        --results "$results" --report "$results/report.xml" test_a_dragged_knob_moves_the_port &&
        convert "$results/jalv-gtk3-dragged.png" -trim +repage -dither None -colors 256 \
            -define png:format=png8 -define png:exclude-chunks=date,time "$pictures/jalv.png"
}

#!/usr/bin/env bash
# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO
#
# run.sh [--self-update] [program arguments]
#
# From a bare machine to the program's window: installs what is missing, builds, lays out the sample installation
# under build/run, serves the sample site on loopback and runs the program with settings of its own. Without a display
# it runs on one in memory, saves build/run/window.png when the check has ended, and closes the window.
# With --self-update the site offers a newer version of the program.
# With POSE=tip, menu or why the picture also shows the tip, the menu or the explanation of the product without an
# answer; POSE_SIDE=left says that the buttons are on the left.
source "$(dirname "$0")/lib.sh"
source scripts/display.sh

RUN=$TREE/build/run
PROGRAM=$RUN/program
SITE=$RUN/site
OUTPUT=$RUN/output.txt
PICTURE=$RUN/window.png
# The place of the button of the product without an answer, in pixels from the window's top and side.
FAILURE_Y=225
FAILURE_X=70

has_display() { [[ -n ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; }

# Two runs at once would overwrite each other's files.
claim_folder() {
    mkdir -p "$RUN"
    exec {LOCK}>"$RUN/lock"
    flock -n "$LOCK" || fail "another run.sh is using $RUN"
}

# Keeps the file of an executable that has not changed, and lays out all else afresh.
install_program() {
    rm -rf "$PROGRAM/share" "$PROGRAM/Languages" "$PROGRAM/gallery"
    cmake --install build/release --prefix "$PROGRAM" >/dev/null
}

serving_or_ended() { grep -q '^Serving ' "$SITE.log" || ! alive "$STARTED"; }

serve_sample_site() {
    : >"$SITE.log"
    start scripts/sample-site.sh ${SELF_UPDATE:+--self-update} "$PROGRAM" "$SITE" >"$SITE.log" 2>&1
    wait_until 60 serving_or_ended || true
    grep '^Serving ' "$SITE.log" || fail "no web server: $(<"$SITE.log")"
}

# The program's home, settings and caches all lie below build/run.
sandbox() {
    local home=$RUN/home
    mkdir -p "$home/.config"
    [[ ! -e ${XAUTHORITY:-$HOME/.Xauthority} ]] || export XAUTHORITY=${XAUTHORITY:-$HOME/.Xauthority}
    export HOME=$home XDG_CONFIG_HOME=$home/.config XDG_CACHE_HOME=$home/.cache XDG_DATA_HOME=$home/.local/share
    export XDG_CONFIG_DIRS=$SITE/machine
    if [[ -z ${XDG_RUNTIME_DIR:-} ]]; then
        install -d -m 700 "$RUN/runtime"
        export XDG_RUNTIME_DIR=$RUN/runtime
    fi
}

run_on_display() {
    start "$PROGRAM/bin/VARDOProductUpdate" "$@"
    wait "$STARTED" || fail "the program ended with $?"
}

# Prints what the samples' installer and content tool have noted; both may outlive the program.
show_notes() {
    local log
    for log in "$RUN"/home/*.log; do
        [[ ! -e $log ]] || cat "$log"
    done
}

# --- without a display -----------------------------------------------------------------------------------------------

window() { window_of "$PROGRAM_GROUP"; }

program_ended() { ! alive "$PROGRAM_GROUP"; }

# The check has ended when every product of the list that the program uses by then has its line.
check_ended() {
    local products done_lines
    products=$(grep -cE '<(Product|Gallery|Notification) ' "$PROGRAM/share/products.xml")
    done_lines=$(grep -ac '^- Done ' "$OUTPUT")
    ((done_lines >= products)) || program_ended
}

window_or_end() { [[ -n $(window) ]] || program_ended; }

# A newer version was offered: the picture shows the question, and OK lets its installer run.
answer_self_update() {
    take_picture "$(window)" "$PICTURE"
    press "$(window)" Return
    wait_until 30 test -s "$RUN/home/installer.log" || say "The installer did not run."
}

# Scrolls the table to its top, and moves the pointer to that button.
point_at_failure() {
    local x=$FAILURE_X WIDTH
    eval "$(xdotool getwindowgeometry --shell "$1" | grep '^WIDTH=')"
    [[ ${POSE_SIDE:-} == left ]] || x=$((WIDTH - FAILURE_X))
    xdotool mousemove --window "$1" "$x" 120 click --repeat 20 4 mousemove --window "$1" "$x" "$FAILURE_Y"
}

has_dialog() { [[ $(window) != "$1" ]]; }

# Opens what POSE names, and takes a picture of it beside the window.
pose() {
    local main=$1
    xdotool windowfocus --sync "$main"
    point_at_failure "$main"
    case $POSE in
        tip) xdotool mousemove_relative -- 1 0 ;;
        menu) xdotool click 3 ;;
        why) xdotool click 3 sleep 0.5 key Down Down Down Return ;;
    esac
    wait_until 10 has_dialog "$main" || say "Nothing opened for the pose $POSE."
    sleep 0.5
    take_picture root "$PICTURE"
    convert "$PICTURE" -trim +repage "$PICTURE"
    [[ $POSE == tip ]] || press "$(window)" Escape
}

show_check() {
    local main
    wait_until 120 check_ended || say "The check did not end within two minutes; this is how far it came."
    program_ended && return
    main=$(window)
    if [[ -n ${POSE:-} ]]; then pose "$main"; else take_picture "$main" "$PICTURE"; fi
    press "$main" Escape
}

run_in_memory() {
    start_display "$RUN"
    # Without an address, Qt asks dbus-launch(1) for a bus, which outlives the script.
    export DBUS_SESSION_BUS_ADDRESS=${DBUS_SESSION_BUS_ADDRESS:-disabled:}
    start "$PROGRAM/bin/VARDOProductUpdate" "$@" >"$OUTPUT" 2>&1
    PROGRAM_GROUP=$STARTED
    wait_until 60 window_or_end || say "No window within a minute."
    if [[ -n $(window) ]]; then
        if [[ -n $SELF_UPDATE ]]; then answer_self_update; else show_check; fi
    fi
    wait_until 30 program_ended || fail "the program did not end within 30 seconds of closing its window"
    say "What the program printed:"
    cat "$OUTPUT"
    wait "$PROGRAM_GROUP" || fail "the program ended with $?"
    if [[ -e $PICTURE ]]; then say "Its window: $PICTURE"; else say "It showed no window."; fi
}

# ---------------------------------------------------------------------------------------------------------------------

SELF_UPDATE=""
if [[ ${1:-} == --self-update ]]; then
    SELF_UPDATE=yes
    shift
fi
if has_display; then ensure_packages build run; else ensure_packages build run headless; fi
claim_folder
end_with_script
build release program
install_program
serve_sample_site
sandbox
rm -f "$PICTURE" "$RUN"/home/*.log
say "Running the program; its settings are in $RUN/home/.config"
if has_display; then run_on_display "$@"; else run_in_memory "$@"; fi
show_notes

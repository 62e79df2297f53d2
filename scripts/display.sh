# shellcheck shell=bash
# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO
#
# A display in memory, and pictures of what is on it; for scripts that have sourced lib.sh.

# start_display FOLDER: starts it, and sets DISPLAY and XAUTHORITY; FOLDER holds the key and the log.
start_display() {
    local folder=$1 key number=$1/display
    key=$(mcookie)
    export XAUTHORITY=$folder/xauthority
    rm -f "$XAUTHORITY" "$number"
    xauth -q add :0 . "$key" 2>/dev/null
    # Without -noreset it would start anew whenever its last client, such as xdotool, ends.
    start Xvfb -displayfd 3 -screen 0 1920x1200x24 -nolisten tcp -noreset -auth "$XAUTHORITY" \
        3>"$number" 2>"$folder/display.log"
    wait_until 30 test -s "$number" || fail "no display in memory: $(<"$folder/display.log")"
    DISPLAY=:$(<"$number")
    export DISPLAY
    unset WAYLAND_DISPLAY
    xauth -q add "$DISPLAY" . "$key"
}

# window_of PROCESS: prints its newest window, whose title depends on the language; nothing without a window.
window_of() { xdotool search --onlyvisible --pid "$1" 2>/dev/null | tail -n 1; }

# take_picture WINDOW FILE: takes pictures until two in a row are alike, since the window is then fully painted.
take_picture() {
    local id=$1 picture=$2 tries=40
    local earlier=${picture%.png}.earlier.png
    import -window "$id" "$picture"
    while ((tries-- > 0)); do
        sleep 0.1
        mv "$picture" "$earlier"
        import -window "$id" "$picture"
        if cmp -s <(convert "$picture" rgb:-) <(convert "$earlier" rgb:-); then
            break
        fi
    done
    rm -f "$earlier"
}

# press WINDOW KEY: gives the window the focus and presses the key.
press() { xdotool windowfocus --sync "$1" key "$2"; }

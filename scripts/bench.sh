#!/usr/bin/env bash
# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO
#
# bench.sh [--json] [--runs N]
#
# Measures the optimised program. Prints for each figure the median of at least five runs, that of its reference, and
# their ratio, as a table or as JSON. Everything runs on a display in memory, in a /tmp of its own, against web servers
# on this machine, which should have nothing else to do meanwhile.
source "$(dirname "$0")/lib.sh"

STATE=$TREE/build/bench

# The second half of the script runs in namespaces of its own, where no other copy of the program holds the lock.
measure() {
    mount -t tmpfs -o mode=1777 bench /tmp
    end_with_script
    start_site
    start_display
    build/release/bench/bench "$STATE" "$PORT" "$RUNS" ${JSON:+--json} 2>"$STATE/bench.log" ||
        fail "the measurement failed; see $STATE/bench.log"
}

lay_out() {
    local tool
    rm -rf "$STATE"
    mkdir -p "$STATE/bin" "$STATE/site" "$STATE/scratch"
    for tool in app/VARDOProductUpdate bench/bare_dialog bench/scale_benchmark; do
        cp "build/release/$tool" "$STATE/bin/"
    done
}

start_site() {
    local tries=5
    while ((tries-- > 0)); do
        PORT=$(free_port)
        # Root of a user namespace cannot give nginx's folders to a user that this namespace does not know.
        sed "1i user root;
             s/@PORT@/$PORT/" samples/nginx.conf >"$STATE/nginx.conf"
        # The server at the far end of the line is not on loopback; it runs in the line's namespace alone.
        sed "s/127.0.0.1:$PORT/$PORT/; s/nginx.pid/line.pid/" "$STATE/nginx.conf" >"$STATE/line.conf"
        start nginx -p "$STATE/" -c nginx.conf -e error.log
        wait_until 10 test -s "$STATE/nginx.pid" && return
    done
    fail "the web server did not start; see $STATE/error.log"
}

start_display() {
    start Xvfb -displayfd 3 -noreset -screen 0 1280x800x24 -nolisten tcp 3>"$STATE/display" 2>"$STATE/display.log"
    wait_until 30 test -s "$STATE/display" || fail "no display in memory: $(<"$STATE/display.log")"
    DISPLAY=:$(<"$STATE/display")
    export DISPLAY
}

JSON=${JSON:-}
RUNS=${RUNS:-5}
PATH=$PATH:/usr/sbin
if [[ ${1:-} == --inside ]]; then
    measure
    exit
fi
while [[ $# -gt 0 ]]; do
    case $1 in
        --json) JSON=yes ;;
        --runs) RUNS=${2:?how many runs} && shift ;;
        *) fail "usage: bench.sh [--json] [--runs N]" ;;
    esac
    shift
done
((RUNS >= 5)) || fail "fewer than five runs say nothing"
[[ $TREE != /tmp/* ]] || fail "the tree must not lie below /tmp"
ensure_packages build run headless bench >&2
build release benchmarks >&2
lay_out
unset QT_QPA_PLATFORM WAYLAND_DISPLAY
export JSON RUNS LC_ALL=C.UTF-8
MAP=()
[[ $(id -u) == 0 ]] || MAP=(--map-root-user)
exec unshare --mount --ipc "${MAP[@]}" "$0" --inside

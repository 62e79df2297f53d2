# shellcheck shell=bash
# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO
#
# The scripts share this: messages, the packages of the machine, the build, and processes that end with the script. A
# script sources this file first, which changes to the root of the tree.

set -euo pipefail

SCRIPTS=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)
TREE=$(dirname "$SCRIPTS")
cd "$TREE"

say() { printf '== %s\n' "$*"; }

fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# --- packages ------------------------------------------------------------------------------------------------------

# packages_of SECTION...: prints the package names of these sections of packages.txt, one a line.
packages_of() {
    local section
    for section in "$@"; do
        awk -v wanted="[$section]" '/^\[/ { inside = ($1 == wanted); next } inside && NF && !/^#/ { print $1 }' \
            "$SCRIPTS/packages.txt"
    done
}

# missing_packages SECTION...: prints those of them that are not installed.
missing_packages() {
    local wanted
    mapfile -t wanted < <(packages_of "$@")
    comm -23 <(printf '%s\n' "${wanted[@]}" | sort -u) \
        <(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null |
            sed -n 's/^installed //p' | sort -u)
}

# as_root COMMAND...: runs it as root; other users need sudo.
as_root() {
    if [[ $(id -u) == 0 ]]; then
        "$@"
    else
        sudo "$@"
    fi
}

# Installed packages must not start their services: they would listen on every address of the machine. While
# packages are installed, a policy-rc.d (invoke-rc.d(8)) forbids it, unless the machine has a policy of its own.
SERVICE_POLICY=/usr/sbin/policy-rc.d
OUR_POLICY=""

forbid_services() {
    [[ -e $SERVICE_POLICY ]] && return
    OUR_POLICY=yes
    printf '#!/bin/sh\nexit 101\n' | as_root tee "$SERVICE_POLICY" >/dev/null
    as_root chmod 755 "$SERVICE_POLICY"
}

allow_services() {
    [[ -n $OUR_POLICY ]] || return 0
    as_root rm -f "$SERVICE_POLICY"
    OUR_POLICY=""
}

# keep_services_off PACKAGE...: keeps their services from starting at the next boot.
keep_services_off() {
    local name
    for name in nginx squid prometheus krb5-kdc krb5-admin-server; do
        if [[ " $* " == *" $name "* && -e /etc/init.d/$name ]]; then
            say "The service $name stays off: the scripts start servers of their own, on loopback only."
            as_root update-rc.d "$name" disable || say "could not switch the service $name off for the next boot"
        fi
    done
}

apt_install() {
    # The lists of a fresh machine are empty or old: read them when the first attempt does not find everything.
    local options=(-y --no-install-recommends -o Dpkg::Use-Pty=0 -q)
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install "${options[@]}" "$@" && return
    say "Reading the package lists, and trying again"
    as_root apt-get update -q
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install "${options[@]}" "$@"
}

# ensure_packages SECTION...: installs what is missing, or stops and says what to type.
ensure_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    [[ ${#missing[@]} -gt 0 ]] || return 0
    say "Missing packages: ${missing[*]}"
    command -v apt-get >/dev/null ||
        fail "this is no Debian system; install what these packages hold: ${missing[*]}"
    if [[ $(id -u) != 0 ]] && ! command -v sudo >/dev/null; then
        fail "they can be installed by root only. As root, run: apt-get update && apt-get install ${missing[*]}"
    fi
    trap allow_services EXIT
    trap 'exit 130' INT TERM
    forbid_services
    apt_install "${missing[@]}" ||
        fail "apt-get could not install them. As root, run: apt-get update && apt-get install ${missing[*]}"
    allow_services
    trap - EXIT INT TERM
    keep_services_off "${missing[@]}"
}

# --- build ---------------------------------------------------------------------------------------------------------

# build PRESET [TARGET [CMAKE ARGUMENT...]]: configures and builds, with ccache where the machine has it.
build() {
    local preset=$1 target=${2:-all} launcher=()
    if command -v ccache >/dev/null; then
        launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
        export CCACHE_BASEDIR=$TREE CCACHE_NOHASHDIR=1
    fi
    say "Building ($preset)"
    cmake --preset "$preset" "${launcher[@]}" "${@:3}" --log-level=WARNING >/dev/null
    cmake --build --preset "$preset" --target "$target"
}

# --- processes -----------------------------------------------------------------------------------------------------

# Process groups that this script started, latest last.
GROUPS_STARTED=()

# start COMMAND...: starts it in the background, in a process group of its own that ends when this script does,
# however it ends. Its number is in $STARTED.
start() {
    (
        # The process must not inherit the lock that the script holds.
        [[ -z ${LOCK:-} ]] || exec {LOCK}>&-
        exec setsid setpriv --pdeathsig TERM "$@"
    ) &
    STARTED=$!
    GROUPS_STARTED+=("$STARTED")
    # Waits until the group exists, or the process has ended already.
    until alive "$STARTED" || ! kill -0 "$STARTED" 2>/dev/null; do
        sleep 0.01
    done
}

alive() { kill -0 -- "-$1" 2>/dev/null; }

# stop GROUP: asks the group to end, and kills it after five seconds.
stop() {
    local tries=50
    kill -TERM -- "-$1" 2>/dev/null || true
    while alive "$1" && ((tries-- > 0)); do
        sleep 0.1
    done
    kill -KILL -- "-$1" 2>/dev/null || true
    wait "$1" 2>/dev/null || true
}

stop_all() {
    local index
    for ((index = ${#GROUPS_STARTED[@]} - 1; index >= 0; --index)); do
        stop "${GROUPS_STARTED[index]}"
    done
    GROUPS_STARTED=()
}

# end_with_script: from here on, all started processes end with the script, also on Ctrl-C.
end_with_script() {
    trap stop_all EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
}

# Prints a port that was free a moment ago; the system chooses it.
free_port() {
    perl -MIO::Socket::INET -e \
        'print IO::Socket::INET->new(Listen => 1, LocalAddr => "127.0.0.1")->sockport or die "no free port: $!"'
}

# wait_until SECONDS CONDITION...: runs the condition until it holds; false after that many seconds.
wait_until() {
    local deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < deadline)) || return 1
        sleep 0.05
    done
}

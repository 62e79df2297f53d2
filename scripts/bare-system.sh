# shellcheck shell=bash
# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO
#
# A bare Debian system in memory, for scripts that have sourced lib.sh and display.sh; see verify-package.sh.

STATE=$TREE/build/verify
ROOT=$STATE/root
SUITE=bookworm

# Prints where this machine gets the suite from, by its own apt sources.
mirror_of_machine() {
    # shellcheck disable=SC2016 # apt-get fills them in.
    apt-get indextargets --format '$(CODENAME) $(COMPONENT) $(REPO_URI)' 'Created-By: Packages' |
        awk -v suite="$SUITE" '$1 == suite && $2 == "main" && !seen++ { print $3 }'
}
MIRROR=${MIRROR:-$(mirror_of_machine)}

# in_namespaces COMMAND...: runs it as root, with mounts, processes and semaphores of its own, which end with it.
in_namespaces() {
    if [[ $(id -u) != 0 ]] && ! command -v sudo >/dev/null; then
        fail "only root can install a system. As root, run: $0 $PACKAGE"
    fi
    [[ $TREE != /tmp/* && $PACKAGE != /tmp/* ]] ||
        fail "neither the tree nor the package may lie below /tmp, which the display hides; move them"
    mkdir -p "$STATE/archives/partial" "$ROOT"
    exec {LOCK}>"$STATE/lock"
    flock -n "$LOCK" || fail "another verify-package.sh is using $STATE; wait for its end"
    as_root env "MIRROR=$MIRROR" unshare --mount --pid --fork --kill-child --ipc --uts "$@"
}

# --- making it -------------------------------------------------------------------------------------------------------

# Makes the bare system anew when it is older than 30 days, since a mirror may no longer have its packages.
prepare() {
    [[ -n $(find "$STATE/base.tar" -mtime -30 2>/dev/null) ]] || make_base
    mount_root
    say "Unpacking the bare system"
    tar -C "$ROOT" -xpf "$STATE/base.tar"
    mount_in_root
    install_dependencies
}

mount_root() {
    mount -t tmpfs -o mode=755,size=6g vardo-verify "$ROOT" || fail "could not mount a file system in memory"
}

make_base() {
    [[ -n $MIRROR ]] || fail "no apt source of this machine has $SUITE main. Name a mirror: MIRROR=ADDRESS $0 $PACKAGE"
    say "Making a bare system ($SUITE from $MIRROR)"
    mount_root
    debootstrap --variant=minbase "$SUITE" "$ROOT" "$MIRROR" >"$STATE/debootstrap.log" 2>&1 ||
        fail "debootstrap failed; see $STATE/debootstrap.log. With another mirror: MIRROR=ADDRESS $0 $PACKAGE"
    rm -f "$ROOT"/var/cache/apt/archives/*.deb
    tar -C "$ROOT" -cf "$STATE/base.tar.new" .
    mv "$STATE/base.tar.new" "$STATE/base.tar"
    umount "$ROOT"
}

mount_in_root() {
    mount -t tmpfs -o mode=1777 vardo-verify /tmp
    mount -t proc proc "$ROOT/proc"
    mount -t proc proc /proc
    mkdir -p "$ROOT/dev/shm" "$ROOT/var/cache/apt/archives" "$ROOT/tmp/.X11-unix" /tmp/.X11-unix
    chmod 1777 "$ROOT/tmp/.X11-unix" /tmp/.X11-unix
    mount -t tmpfs -o mode=1777 vardo-verify "$ROOT/dev/shm"
    mount --bind "$STATE/archives" "$ROOT/var/cache/apt/archives"
    # Programs in the system reach the display by its socket.
    mount --bind /tmp/.X11-unix "$ROOT/tmp/.X11-unix"
    cp -L /etc/resolv.conf "$ROOT/etc/resolv.conf"
    printf '#!/bin/sh\nexit 101\n' >"$ROOT/usr/sbin/policy-rc.d"
    chmod 755 "$ROOT/usr/sbin/policy-rc.d"
}

# Installs what the package depends on, and nothing else.
install_dependencies() {
    local log=$STATE/apt.log options=(-y --no-install-recommends -o Dpkg::Use-Pty=0 -o APT::Keep-Downloaded-Packages=true)
    say "Installing what the package depends on"
    in_root apt-get update >"$log" 2>&1 || fail "apt-get could not read the package lists; see $log"
    # apt's own user could not write into build/.
    in_root apt-get -o APT::Sandbox::User=root satisfy "${options[@]}" "$(dpkg-deb -f "$PACKAGE" Depends)" >>"$log" 2>&1 ||
        fail "apt-get could not install what the package depends on; see $log"
}

add_user() { in_root useradd --create-home "$1"; }

# --- being in it -----------------------------------------------------------------------------------------------------

IN_ROOT=(PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive)

home_of() { awk -F: -v user="$1" '$1 == user { print $6 }' "$ROOT/etc/passwd"; }

in_root() { chroot "$ROOT" /usr/bin/env -i "${IN_ROOT[@]}" HOME=/root "$@"; }

# command_of USER: puts into COMMAND the words that run a command as the user, in the user's home.
command_of() {
    local home
    home=$(home_of "$1")
    # Without an address, Qt asks dbus-launch(1) for a bus.
    COMMAND=(chroot "--userspec=$1:$1" "$ROOT" /usr/bin/env -i -C "$home" "${IN_ROOT[@]}" "USER=$1" "HOME=$home"
        "DISPLAY=${DISPLAY:-}" "XAUTHORITY=$home/.Xauthority" DBUS_SESSION_BUS_ADDRESS=disabled:)
}

as_user() {
    command_of "$1"
    "${COMMAND[@]}" "${@:2}"
}

# start_as_user USER COMMAND...: starts it in the background; its process is $STARTED, its output is in program.log.
start_as_user() {
    command_of "$1"
    : >"$STATE/program.log"
    start "${COMMAND[@]}" "${@:2}" >"$STATE/program.log" 2>&1
}

start_display_for_root() {
    mkdir -p /tmp/display
    start_display /tmp/display
}

hand_over_display() {
    local home
    home=$ROOT$(home_of "$1")
    install -m 600 -o "$(stat -c %u "$home")" -g "$(stat -c %g "$home")" "$XAUTHORITY" "$home/.Xauthority"
}

# --- looking at it ---------------------------------------------------------------------------------------------------

# Prints type, mode, owner and contents of every file, except those that every use of a system changes: the records of
# dpkg and apt, caches and logs, temporary files and homes.
list_files() {
    local volatile=(proc dev sys run tmp home root var/cache var/log var/tmp var/lib/dpkg var/lib/apt) prune=() path
    for path in "${volatile[@]}"; do
        prune+=(-path "./$path" -o)
    done
    (
        cd "$ROOT" || exit
        find . \( "${prune[@]}" -false \) -prune -o -printf '%p %y %m %U:%G %l\n' | sort
        find . \( "${prune[@]}" -false \) -prune -o -type f -print0 | sort -z | xargs -0 sha256sum
    )
}

digest_of() { (cd "$ROOT/$1" && find . -type f -print0 | sort -z | xargs -0 sha256sum | sha256sum); }

#!/usr/bin/env bash
# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO
#
# verify-package.sh PACKAGE
#
# Installs the package into a bare Debian system made for that, without a network and with no packages but those that it
# depends on; runs its programs there as a user and as root; turns its silent check off as an administrator would; upgrades it
# and purges it; and compares the system's files with those before. The picture of the window is build/verify/window.png.
#
# The system lies in memory, in namespaces of its own. All mounts and processes end with these, however the script ends.
# The script writes into build/verify alone: it keeps the bare system (base.tar) and the packages (archives/) there for
# the next time. They come from MIRROR; without it, from the mirror of the machine's own apt sources.
source "$(dirname "$0")/lib.sh"
source scripts/display.sh
source scripts/bare-system.sh

# --- what is checked -------------------------------------------------------------------------------------------------

PREFIX=/opt/vardo/product-update
NOTEBOOK=$PREFIX/share/SoftwareUpdateVN.xml
SETTINGS="/etc/xdg/VARDO Technologies.conf"
AUTOSTART=/etc/xdg/autostart/vardo-product-update.desktop
MENU=/usr/share/applications/vardo-product-update.desktop
POLICY='VARDO%20Technologies\Product%20Update\Policy\Interval=7'
FOREIGN='VARDO%20Technologies\VARDO%20Notebook\Theme=dark'

# value_of KEY ENTRY: prints the value of a key in a desktop entry of the bare system.
value_of() { sed -n "s/^$1=//p" "$ROOT$2"; }

install_package() {
    say "Installing the package"
    in_root dpkg -i /tmp/package.deb >"$STATE/dpkg.log" 2>&1 || fail "dpkg could not install it; see $STATE/dpkg.log"
    # Another product of the maker is installed beside it.
    cat >"$ROOT$NOTEBOOK" <<'END'
<SoftwareUpdate Location="Client">
  <Product CurrentVersion="11.0.580.0" RemoteVersionFile="n.xml" RemoteVersionFileURL="http://updates.example.com/"/>
</SoftwareUpdate>
END
}

options_in() { grep -oE -- '(^|[^[:alnum:]-])--[a-z][a-z-]*' | grep -oE -- '--[a-z-]*' | sort -u; }

# check_console COMMAND: checks that it answers, that its manual page has exactly its options, and that it needs no
# library for windows, so that it runs on servers.
check_console() {
    local command=$1 version help
    version=$(as_user person "$command" --version) || fail "$command --version ended with $?"
    [[ $version == *"$VERSION"* ]] || fail "$command says that it is version \"$version\", the package is $VERSION"
    help=$(as_user person "$command" --help) || fail "$command --help ended with $?"
    diff <(options_in <<<"$help") <(zcat "$ROOT/usr/share/man/man1/$command.1.gz" | sed 's/\\-/-/g' | options_in) >&2 ||
        fail "$command --help (<) and its manual page (>) have different options; see packaging/man"
    ! in_root ldd "/usr/bin/$command" | grep -E 'libQt6(Gui|Widgets)' >&2 ||
        fail "$command needs the libraries above, for windows; see what its rooms link in CMakeLists.txt"
}

check_console_programs() {
    local command
    say "Asking the programs who they are"
    grep -aqF "[:VARDO Technologies $VERSION:]" "$ROOT$PREFIX/bin/VARDOProductUpdate" ||
        fail "the program does not bear the package's version, $VERSION"
    [[ $(as_user person vardo-product-update -nonsense) == "error in parameters" ]] ||
        fail "vardo-product-update does not start from the command line"
    for command in vardo-update-report vardo-catalog-check vardo-catalog-sign vardo-catalog-release; do
        check_console "$command"
    done
    [[ $(as_user person vardo-update-report --offline --json) == *'"11.0.580.0"'* ]] ||
        fail "vardo-update-report does not find the product that is installed"
}

# program USER ENTRY: starts what the desktop entry starts, as the user; its process is $STARTED.
program() {
    hand_over_display "$1"
    start_as_user "$1" sh -c "exec $(value_of Exec "$2")"
}

window_or_end() { [[ -n $(window_of "$STARTED") ]] || ! alive "$STARTED"; }
ended() { ! alive "$STARTED"; }
await_end() {
    wait_until 30 ended || fail "the program $1 did not end within 30 seconds; see $STATE/program.log"
    wait "$STARTED" || fail "the program $1 ended with $?; see $STATE/program.log"
}

# check_window USER: checks that the program, started from the menu, shows its window, and ends when that is closed.
check_window() {
    local window class
    say "Opening the window from the menu, as $1"
    program "$1" "$MENU"
    wait_until 60 window_or_end || true
    window=$(window_of "$STARTED")
    [[ -n $window ]] || fail "the program showed no window within a minute; see $STATE/program.log"
    [[ $(xdotool getwindowname "$window") == "$(value_of Name "$MENU")" ]] || fail "the window has another title"
    class=$(xprop -id "$window" WM_CLASS | sed 's/.*"\(.*\)"$/\1/')
    [[ $class == "$(value_of StartupWMClass "$MENU")" ]] ||
        fail "the window's class is $class; put that into StartupWMClass of packaging/desktop"
    wait_until 30 check_done || fail "the check did not come to its end; see $STATE/program.log"
    take_picture "$window" "$STATE/window.png"
    press "$window" Escape
    await_end "as $1"
    grep -q 'LastChecked\|Interval' "$ROOT$(home_of "$1")/.config/VARDO Technologies.conf" ||
        fail "the program kept no settings for $1"
}
check_done() { grep -aq '^- Done ' "$STATE/program.log"; }

check_login() {
    say "Logging in, as a user who never checked"
    local deadline=$((SECONDS + 60))
    program newcomer "$AUTOSTART"
    while ! ended && ((SECONDS < deadline)); do
        [[ -z $(window_of "$STARTED") ]] || fail "the silent check showed a window, with nothing new"
        sleep 0.2
    done
    await_end "that runs at login"
    check_done || fail "the silent check checked nothing; see $STATE/program.log"
}

# An administrator turns the silent check off in either way, and upgrades.
check_autostart_stays_off() {
    say "Turning the silent check off, and upgrading"
    local newer=$ROOT/tmp/newer
    printf '%s\n' "$POLICY" >>"$ROOT$SETTINGS"
    echo 'Hidden=true' >>"$ROOT$AUTOSTART"
    dpkg-deb -R "$PACKAGE" "$newer"
    sed -i "s/^Version: .*/&+next/" "$newer/DEBIAN/control"
    echo '# another comment' >>"$newer$AUTOSTART"
    dpkg-deb --root-owner-group -b "$newer" "$newer.deb" >/dev/null
    in_root dpkg --force-confdef --force-confold -i /tmp/newer.deb >>"$STATE/dpkg.log" 2>&1 || fail "dpkg did not upgrade it"
    grep -qx 'Hidden=true' "$ROOT$AUTOSTART" || fail "the upgrade turned the silent check on again"
    [[ $(as_user person vardo-update-report --offline --json) == *'"policy": ['*'"Interval"'* ]] ||
        fail "the upgrade lost the policy of the machine"
    rm -f "$ROOT$AUTOSTART" "$ROOT$AUTOSTART".dpkg-*
    in_root dpkg -i /tmp/newer.deb >>"$STATE/dpkg.log" 2>&1 || fail "dpkg did not install it again"
    [[ ! -e $ROOT$AUTOSTART ]] || fail "the upgrade brought the deleted autostart entry back"
}

check_removal() {
    say "Removing and purging the package"
    local homes
    # Without this setting the checks below would prove nothing.
    grep -q ProxyInformation "$ROOT$SETTINGS" || fail "root's run left nothing in the machine's settings"
    printf '%s\n' "$FOREIGN" 'VARDO%20Technologies\Product%20Update\Interval=7' >>"$ROOT$SETTINGS"
    touch "$ROOT$PREFIX/share/products.xml.new-abc123"
    homes=$(digest_of home)
    in_root dpkg --remove "$NAME" >>"$STATE/dpkg.log" 2>&1 || fail "dpkg could not remove it; see $STATE/dpkg.log"
    [[ ! -e $ROOT$PREFIX/bin ]] || fail "removing left the programs"
    in_root dpkg --purge "$NAME" >>"$STATE/dpkg.log" 2>&1 || fail "dpkg could not purge it; see $STATE/dpkg.log"
    [[ $(digest_of home) == "$homes" ]] || fail "purging changed the users' homes"
    [[ $(grep -v '^$' "$ROOT$SETTINGS") == "[Software]"$'\n'"$FOREIGN" ]] ||
        fail "purging left this in the machine's settings: $(<"$ROOT$SETTINGS")"
    [[ -e $ROOT$NOTEBOOK ]] || fail "purging removed the description of another product"
    # Their own products would remove these, and with them the folders that they kept.
    rm "$ROOT$NOTEBOOK" "$ROOT$SETTINGS"
    rmdir "$ROOT"{"$PREFIX"/share,"$PREFIX",/opt/vardo,/etc/xdg}
}

check_traces() {
    list_files >"$STATE/after.txt"
    diff "$STATE/before.txt" "$STATE/after.txt" >"$STATE/traces.txt" ||
        fail "the package left traces; see $STATE/traces.txt: $(head -n 5 "$STATE/traces.txt")"
}

verify() {
    end_with_script
    cp "$PACKAGE" "$ROOT/tmp/package.deb"
    add_user person
    add_user newcomer
    list_files >"$STATE/before.txt"
    install_package
    check_console_programs
    start_display_for_root
    check_window person
    check_login
    check_window root
    check_autostart_stays_off
    check_removal
    check_traces
    say "The package came, worked and went; the window: $STATE/window.png"
}

# ---------------------------------------------------------------------------------------------------------------------

case ${1:-} in
    --prepare)
        PACKAGE=$2
        prepare
        exec unshare --net "$SCRIPTS/verify-package.sh" --run "$PACKAGE"
        ;;
    --run) ;;
    *)
        [[ $# == 1 ]] || fail "usage: verify-package.sh PACKAGE"
        PACKAGE=$(cd "$OLDPWD" && realpath -e "$1") || fail "make the package first: scripts/package.sh"
        ensure_packages verify headless
        in_namespaces "$SCRIPTS/verify-package.sh" --prepare "$PACKAGE"
        exit
        ;;
esac
PACKAGE=$2
NAME=$(dpkg-deb -f "$PACKAGE" Package)
VERSION=$(dpkg-deb -f "$PACKAGE" Version)
verify

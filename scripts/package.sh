#!/usr/bin/env bash
# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO
#
# package.sh [--site ADDRESS --key FILE | --no-self-update | --unsigned-self-update] [--catalogue-key FILE] [--list FILE]
#            [--maintainer 'NAME <MAIL>'] [--verify]
#
# Makes the Debian package, build/vardo-product-update_VERSION_ARCHITECTURE.deb, from an optimised and hardened build.
# ADDRESS is the maker's site; without it the installed program asks no site until a product brings an address of its
# own. A site needs one of three choices: --key is the maker's public key, by which the program verifies newer versions
# of itself before it starts their installers; with --no-self-update it never offers to replace itself, for computers
# that get their packages in other ways; with --unsigned-self-update it starts what the network gives it.
# --catalogue-key is the public key for the files that the site publishes, and --list the newest product list.
# With --verify the usual tools examine the package, and verify-package.sh installs it into a bare Debian system made for
# that, runs it there and removes it again; that needs root, a network, and some minutes.
source "$(dirname "$0")/lib.sh"
# Everybody may read what the package holds.
umask 022

STATE=$TREE/build/package
NAME=vardo-product-update

# Prints the flags that dpkg-buildflags(1) advises, without debug information.
flags_of() { DEB_BUILD_MAINT_OPTIONS=hardening=+all DEB_CXXFLAGS_MAINT_STRIP=-g dpkg-buildflags --get "$1"; }

make_package() {
    rm -rf "$STATE/_CPack_Packages" "$STATE/$NAME"_*.deb
    build package packaged "-DVARDO_UPDATE_SITE=$SITE" "-DVARDO_SELF_UPDATE=$SELF_UPDATE" \
        "-DVARDO_UNSIGNED_SELF_UPDATE=$UNSIGNED" "-DVARDO_PUBLIC_KEY=$KEY" "-DVARDO_CATALOGUE_KEY=$CATALOGUE_KEY" \
        "-DVARDO_LIST=$LIST" \
        "-DCMAKE_CXX_FLAGS=$(flags_of CPPFLAGS) $(flags_of CXXFLAGS)" \
        "-DCMAKE_EXE_LINKER_FLAGS=$(flags_of LDFLAGS)" "${MAINTAINER[@]}"
    say "Packing"
    (cd "$STATE" && cpack >cpack.log) || fail "cpack failed; see $STATE/cpack.log"
    PACKAGE=$(ls "$STATE/$NAME"_*.deb)
    check_version
    mv "$PACKAGE" build/
    PACKAGE=$TREE/build/${PACKAGE##*/}
}

check_version() {
    local packaged noted dated
    packaged=$(dpkg-deb -f "$PACKAGE" Version)
    noted=$(dpkg-parsechangelog -l packaging/debian/changelog -S Version)
    [[ $packaged == "$noted" ]] ||
        fail "the program is version $packaged, the newest in packaging/debian/changelog is $noted; add an entry there"
    noted=$(date -u -d "@$(dpkg-parsechangelog -l packaging/debian/changelog -S Timestamp)" +%F)
    dated=$(sed -n 's/^set(VARDO_RELEASE_DATE \(.*\))$/\1/p' cmake/Package.cmake)
    [[ $dated == "$noted" ]] ||
        fail "cmake/Package.cmake dates the release $dated, packaging/debian/changelog $noted; make them one"
}

# --- lint ------------------------------------------------------------------------------------------------------------

# examine NAME REMEDY COMMAND...: fails unless the command succeeds and says nothing.
examine() {
    local name=$1 remedy=$2 said
    shift 2
    said=$("$@" 2>&1) && [[ -z $said ]] && return
    printf '%s\n' "$said" >&2
    fail "$name finds fault with the package. $remedy"
}

lint() {
    local unpacked=$STATE/unpacked page entry
    say "Examining the package"
    rm -rf "$unpacked"
    dpkg-deb -x "$PACKAGE" "$unpacked"
    examine lintian "Mend it, or add a line with the reason to packaging/debian/lintian-overrides." \
        lintian --allow-root --fail-on error,warning,info --display-info --tag-display-limit 0 "$PACKAGE"
    for entry in "$unpacked"/usr/share/applications/*.desktop "$unpacked"/etc/xdg/autostart/*.desktop; do
        examine desktop-file-validate "See packaging/desktop." desktop-file-validate "$entry"
    done
    examine "systemd-analyze" "See packaging/systemd." unit_faults "$unpacked"
    examine "appstreamcli" "See packaging/desktop/metainfo.xml.in." metainfo "$unpacked"
    for page in "$unpacked"/usr/share/man/man?/*.gz; do
        examine man "See packaging/man." page_warnings "$page"
    done
}

metainfo() {
    appstreamcli validate --no-net --no-color --strict "$1"/usr/share/metainfo/*.xml >"$STATE/appstream.log" 2>&1 ||
        cat "$STATE/appstream.log"
}

# Checks the units with the paths of the files as they have been unpacked.
unit_faults() {
    local units=$STATE/units unit
    rm -rf "$units"
    mkdir -p "$units"
    mkdir -m 700 "$units/runtime"
    for unit in "$1"/usr/lib/systemd/user/*.{timer,service}; do
        sed "s:=/opt/:=$1/opt/:" "$unit" >"$units/${unit##*/}"
    done
    XDG_RUNTIME_DIR=$units/runtime systemd-analyze --user --man=no verify "$units"/*.{timer,service}
}

page_warnings() { LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$1" >/dev/null; }

# whole_path FILE WHAT: prints the path of the file, which is WHAT. The build refuses a file that is anything else.
whole_path() {
    (cd "$OLDPWD" && realpath -e "$1") || fail "$1: give the file of the maker's $2"
}

# ---------------------------------------------------------------------------------------------------------------------

SITE=""
KEY=""
CATALOGUE_KEY=""
LIST=""
SELF_UPDATE=ON
UNSIGNED=OFF
MAINTAINER=(-UVARDO_MAINTAINER)
VERIFY=""
while [[ $# -gt 0 ]]; do
    case $1 in
        --site) SITE=${2:?the address of the maker\'s site} && shift ;;
        --maintainer) MAINTAINER=("-DVARDO_MAINTAINER=${2:?NAME <MAIL>}") && shift ;;
        --key)
            KEY=$(whole_path "${2:?a file}" "public key") || exit
            shift
            ;;
        --catalogue-key)
            CATALOGUE_KEY=$(whole_path "${2:?a file}" "public key") || exit
            shift
            ;;
        --list)
            LIST=$(whole_path "${2:?a file}" "product list") || exit
            shift
            ;;
        --no-self-update) SELF_UPDATE=OFF ;;
        --unsigned-self-update) UNSIGNED=ON ;;
        --verify) VERIFY=yes ;;
        *) fail "usage: package.sh [--site ADDRESS --key FILE | --no-self-update | --unsigned-self-update]" \
            "[--catalogue-key FILE] [--list FILE] [--maintainer 'NAME <MAIL>'] [--verify]" ;;
    esac
    shift
done
[[ -z $SITE || -n $KEY || $SELF_UPDATE == OFF || $UNSIGNED == ON ]] ||
    fail "with --site choose how the program replaces itself: --key FILE (only by what the maker has signed)," \
        "--no-self-update (never), or --unsigned-self-update (by whatever answers for the site)"
ensure_packages build package
[[ -z $VERIFY ]] || ensure_packages verify headless
# With this time stamp, the same sources give the same package.
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(dpkg-parsechangelog -l packaging/debian/changelog -S Timestamp)}
export SOURCE_DATE_EPOCH
make_package
if [[ -n $VERIFY ]]; then
    lint
    scripts/verify-package.sh "$PACKAGE"
fi
say "$PACKAGE"

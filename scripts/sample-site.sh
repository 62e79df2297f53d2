#!/usr/bin/env bash
# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO
#
# sample-site.sh [--self-update] PROGRAM STATE
#
# Turns an installed program (the folder PROGRAM, with bin/ and share/ in it) into the sample installation of samples/,
# and serves the sample site on a free port of 127.0.0.1 until the script is ended. "Serving ADDRESS" on standard output
# says that it is ready. STATE holds what belongs to the run: the site (site/), the machine's settings (machine/) and
# the server's files, access.log among them. With --self-update the site offers a newer version of the program. The
# script signs the site's XML files and that installer with two new pairs of keys; the program gets the public keys, and
# the secret ones are deleted.
source "$(dirname "$0")/lib.sh"

# fill FROM TO: copies the tree FROM into TO and puts the port and the program's folder into every file.
fill() {
    local file text program=${PROGRAM//\\/\\\\}
    mkdir -p "$2"
    cp -R "$1/." "$2"
    while IFS= read -r -d '' file; do
        text=$(<"$2/$file")
        text=${text//@PORT@/"$PORT"}
        printf '%s\n' "${text//@PROGRAM@/"${program//\"/\\\"}"}" >"$2/$file"
    done < <(cd "$1" && find . -type f -print0)
}

# attribute NAME: prints its first value in the description of the program on the site.
attribute() { sed -n "s/.* $1=\"\([^\"]*\)\".*/\1/p;T;q" "$STATE/site/program/VardoProductUpdate.xml"; }

# Signs as docs/signing.md tells the maker to do it. Without --self-update the program has no key for installers.
sign_site() {
    local keys share=$PROGRAM/share argument
    rm -f "$share"/Vardo*.pub
    keys=$(mktemp -d)
    (
        trap 'rm -r "$keys"' EXIT
        minisign -G -W -p "$share/VardoCatalogue.pub" -s "$keys/catalogue" >/dev/null
        "$PROGRAM/bin/VARDOCatalogSign" --key "$keys/catalogue" "$STATE/site" >"$STATE/signed.log" ||
            fail "the sample site cannot be signed"
        [[ -n $SELF_UPDATE ]] || exit 0
        argument=$(attribute UpdateArgument)
        minisign -G -W -p "$share/VardoProductUpdate.pub" -s "$keys/program" >/dev/null
        minisign -S -s "$keys/program" -m "$STATE/site/program/installer.sh" \
            -t "file:installer.sh version:$(attribute UpdateVersion) argument:${argument// /%20}" >/dev/null
    )
}

lay_out() {
    fill samples/installation "$PROGRAM"
    fill samples/machine "$STATE/machine"
    fill samples/site "$STATE/site"
    [[ -z $SELF_UPDATE ]] || fill samples/self-update "$STATE/site"
    sign_site
    sed "s/@PORT@/$PORT/" samples/nginx.conf >"$STATE/nginx.conf"
}

# The server writes its process number into nginx.pid once it listens, and ends when the port is taken.
# shellcheck disable=SC2317  # wait_until calls it
listening_or_ended() { [[ -s $STATE/nginx.pid ]] || ! alive "$STARTED"; }

serve() {
    PORT=$(free_port)
    lay_out
    rm -f "$STATE/nginx.pid"
    start "$NGINX" -p "$STATE/" -c nginx.conf -e error.log
    wait_until 20 listening_or_ended && [[ -s $STATE/nginx.pid ]]
}

SELF_UPDATE=""
if [[ ${1:-} == --self-update ]]; then
    SELF_UPDATE=yes
    shift
fi
[[ $# == 2 ]] || fail "usage: sample-site.sh [--self-update] PROGRAM STATE (two folders)"
PROGRAM=$(cd "$OLDPWD" && realpath -m "$1")
STATE=$(cd "$OLDPWD" && realpath -m "$2")
NGINX=$(PATH=$PATH:/usr/sbin command -v nginx) || fail "nginx is missing: apt-get install nginx"
command -v minisign >/dev/null || fail "minisign is missing: apt-get install minisign"
mkdir -p "$STATE/scratch"
rm -rf "$STATE/site" "$STATE/machine" "$STATE/access.log" "$STATE/error.log"
end_with_script
for _ in 1 2 3 4 5; do
    if serve; then
        echo "Serving http://127.0.0.1:$PORT/"
        wait "$STARTED" || true
        fail "the web server ended; see $STATE/error.log"
    fi
    stop "$STARTED"
done
fail "the web server did not start; see $STATE/error.log"

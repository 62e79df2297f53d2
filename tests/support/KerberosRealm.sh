#!/usr/bin/env bash
# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO
#
# KerberosRealm.sh FOLDER PORT
#
# Serves a Kerberos realm on loopback until it is ended. Makes in the folder krb5.conf, the ticket of the user "someone",
# and the keytab of a proxy on 127.0.0.1; then it prints "ready".
set -euo pipefail
PATH=$PATH:/usr/sbin
export KRB5_CONFIG=$1/krb5.conf KRB5_KDC_PROFILE=$1/krb5.conf
sed "s|@FOLDER@|$1|; s|@PORT@|$2|" "$(dirname "$0")/krb5.conf" >"$KRB5_CONFIG"
{
    kdb5_util create -s -P master
    kadmin.local addprinc -pw word someone
    kadmin.local addprinc -randkey HTTP/127.0.0.1
    kadmin.local ktadd -k "$1/keytab" HTTP/127.0.0.1
    # A proxy that gives up root's rights reads it.
    chmod 755 "$1"
    chmod 644 "$1/keytab"
} >&2
(
    until kinit -c "$1/ticket" someone <<<word >&2; do sleep 0.05; done
    echo ready
) &
exec krb5kdc -n >&2

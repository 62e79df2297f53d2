#!/usr/bin/env bash
# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO
#
# test.sh [CTest arguments]
#
# From a bare machine to CTest's closing line: installs what is missing, builds everything and runs every test. With
# arguments, it builds and runs the fuzzers, which need a compiler of their own, only for "-L fuzz".
source "$(dirname "$0")/lib.sh"

ensure_packages build run headless test fuzz
build release
if [[ $# == 0 || " $* " == *" -L fuzz "* ]]; then
    build fuzz fuzzers
else
    set -- -LE fuzz "$@"
fi
say "Testing"
ctest --preset release "$@"

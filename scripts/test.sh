#!/usr/bin/env bash
# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO
#
# test.sh [CTest arguments]
#
# From a bare machine to CTest's closing line: installs what is missing, builds everything and runs every test.
source "$(dirname "$0")/lib.sh"

ensure_packages build run headless test
build release
say "Testing"
ctest --preset release "$@"

#!/bin/sh
# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO
#
# Stands in for the installer of a newer VARDO Product Update: it notes its arguments in the sandbox's home.
printf 'The installer ran with %s argument(s): %s\n' "$#" "$*" >>"$HOME/installer.log"

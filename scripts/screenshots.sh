#!/usr/bin/env bash
# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO
#
# screenshots.sh
#
# Takes the pictures of docs/ afresh: the window after a check of the sample installation, in English and in the languages
# whose look differs most. They come from run.sh, with a user who never ran the program before.
source "$(dirname "$0")/lib.sh"

unset DISPLAY WAYLAND_DISPLAY
for language in en de ja ar; do
    picture=docs/window-$language.png
    [[ $language != en ]] || picture=docs/window.png
    rm -rf build/run/home
    scripts/run.sh -locale "$language"
    convert build/run/window.png -strip "$picture"
    say "$picture"
done

#!/usr/bin/env bash
# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO
#
# screenshots.sh
#
# Takes the pictures of docs/ afresh: the window after a check of the sample installation, in English and in the
# languages whose look differs most, on a dark desktop, and on a display with twice as many dots; and a row's tip and
# menu. run.sh takes each of them for a new user. Pictures that no page shows go to build/pictures.
source "$(dirname "$0")/lib.sh"

# picture NAME [VARIABLE=VALUE...] [-- program arguments]: runs the program and puts its picture into FOLDER.
picture() {
    local name=$1 variables=()
    shift
    while [[ $# -gt 0 && $1 != -- ]]; do
        variables+=("$1")
        shift
    done
    env "${variables[@]}" scripts/run.sh "${@:2}"
    convert build/run/window.png -strip "$FOLDER/$name.png"
    say "$FOLDER/$name.png"
}

new_user() { rm -rf build/run/home; }

# Writes the settings of a desktop with dark colours.
darken() {
    mkdir -p build/run/home/.config/qt6ct
    printf '[Appearance]\ncustom_palette=true\ncolor_scheme_path=/usr/share/qt6ct/colors/darker.conf\n' \
        >build/run/home/.config/qt6ct/qt6ct.conf
}

FOLDER=docs
ensure_packages pictures
unset DISPLAY WAYLAND_DISPLAY
new_user && picture window
for language in de ja ar; do
    new_user && picture "window-$language" -- -locale "$language"
done
new_user && darken && picture window-dark QT_QPA_PLATFORMTHEME=qt6ct
new_user && darken && picture window-dark-ar QT_QPA_PLATFORMTHEME=qt6ct -- -locale ar
new_user && picture window-200 QT_SCALE_FACTOR=2
for pose in tip menu; do
    new_user && picture "row-$pose" POSE="$pose"
done
FOLDER=build/pictures
mkdir -p "$FOLDER"
# This picture names folders of this machine.
new_user && picture row-why POSE=why
for pose in tip menu why; do
    new_user && darken && picture "row-$pose-dark" POSE="$pose" QT_QPA_PLATFORMTHEME=qt6ct
    new_user && picture "row-$pose-ar" POSE="$pose" POSE_SIDE=left -- -locale ar
done

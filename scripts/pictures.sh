#!/bin/bash
# pictures.sh FOLDER [BUILD]: pictures of the panel in every situation worth looking at, without a screen.
set -uo pipefail
folder=${1:?"usage: ${0##*/} FOLDER [BUILD]"}
preview=${2:-$(dirname "$(readlink -f "$0")")/../build}/bin/panel_preview
mkdir -p "$folder" || exit
failed=0
variables=(LC_ALL=C.UTF-8 LANGUAGE=)

# picture NAME ARGUMENT…
picture() {
    local name=$1
    shift
    env QT_QPA_PLATFORM=offscreen "${variables[@]}" \
        timeout 30 "$preview" --picture "$folder/$name.png" "$@" 2>/dev/null || {
        echo "no picture of $name" >&2
        failed=1
    }
}

picture light
picture dark --dark
picture call --scene call
picture call-dark --scene call --dark
picture muted --scene muted
picture permission --scene permission
picture empty --scene empty
picture many --scene many
picture devices --scene devices
picture outputs --scene devices --open output
picture menu --dark --open more
picture contrast --contrast
picture large-text --text-scale 1.5
variables=(QT_SCALE_FACTOR=2)
picture double
variables=(LC_ALL=de_DE.UTF-8 LANGUAGE=de)
picture german --scene call
variables=(LC_ALL=ar_EG.UTF-8 LANGUAGE=ar)
picture arabic --scene call
exit "$failed"

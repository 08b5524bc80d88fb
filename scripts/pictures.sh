#!/bin/bash
# pictures.sh FOLDER [BUILD]: pictures of the windows, as in docs/pictures: of the program itself, on a screen and in a
# sound session of its own, with apps that really play, call and go away again.
set -uo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
folder=$(realpath -m "${1:?"usage: ${0##*/} FOLDER [BUILD]"}")
build=$(realpath "${2:-$here/../build}") || exit
if [[ ${3-} != inside ]]; then
    FADEWELL_ROOT=$here/..
    # shellcheck source=scripts/setup.sh
    . "$here/setup.sh"
    setup run pictures docs || exit
    exec "$here/session.sh" run --outputs 'Speakers:device.bus = pci,Headphones:device.api = bluez5' -- "${BASH_SOURCE[0]}" "$folder" "$build" inside
fi
cd "$here/.." || exit
# shellcheck source=scripts/demo-apps.sh
. scripts/demo-apps.sh
# shellcheck source=scripts/screen.sh
. scripts/screen.sh
readonly log=$FADEWELL_SESSION/log

fail() {
    echo "pictures: $1" >&2
    exit 1
}

# await TEXT COMMAND…: until COMMAND succeeds.
await() {
    local what=$1
    shift
    SECONDS=0
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < 20)) || fail "$what"
        sleep 0.1
    done
}

# fadewell [VARIABLE=VALUE…]: starts it, in the light and English unless the variables say otherwise.
fadewell() {
    env LC_ALL=C.UTF-8 LANGUAGE= "$@" "$build/bin/fadewell" >>"$log/fadewell.log" 2>&1 &
    fadewell=$!
    await 'Fadewell does not answer' "$build/bin/fadewellctl" apps
}

quit_fadewell() {
    kill "$fadewell" && wait "$fadewell"
}

# A client that the sound server lets only listen, as the configuration of a sandbox would have it.
restricted_fadewell() {
    local rules=$XDG_CONFIG_HOME/pipewire/client-rt.conf.d
    mkdir -p "$rules"
    echo 'context.properties = { pipewire.client.access = restricted }' >"$rules/restricted.conf"
    fadewell
    rm -r "$rules"
}

# The colours of a dark desktop, where Qt finds them.
dark=(KDE_SESSION_VERSION=5 QT_QPA_PLATFORMTHEME=kde)
write_dark_colours() {
    {
        printf '[Colors:%s]\nBackgroundNormal=32,33,36\nForegroundNormal=240,240,240\n' Window View Button
        printf '[Icons]\nTheme=hicolor\n'
    } >"$XDG_CONFIG_HOME/kdeglobals"
}

# A tray, and a font as desktops have one.
start_desktop() {
    start_screen 1000x900 || fail 'no screen (Xvfb)'
    mkdir -p "$XDG_CONFIG_HOME/fontconfig"
    echo '<fontconfig><match><edit name="family" mode="prepend" binding="strong"><string>Inter</string></edit>
        </match></fontconfig>' >"$XDG_CONFIG_HOME/fontconfig/fonts.conf"
    trayer --edge bottom --align right >"$log/trayer.log" 2>&1 &
}

# window TITLE: waits for it, and gives it the keyboard.
window() {
    await "no window $1" xdotool search --onlyvisible --name "^$1\$"
    xdotool search --onlyvisible --name "^$1\$" windowraise windowfocus --sync
}

# take NAME [KEY…]: a picture of the window that has the keyboard, after these keys.
take() {
    local name=$1
    shift
    (($# == 0)) || xdotool key --delay 150 "$@"
    picture "$folder/$name.png" || fail "no picture of $name"
}

# press X Y: in the window that has the keyboard.
press() {
    xdotool mousemove --window "$(xdotool getwindowfocus)" "$1" "$2" click 1 mousemove 999 0
}

control() {
    "$build/bin/fadewellctl" "$@" >/dev/null || fail "fadewellctl $* fails"
}

mixer() {
    control show
    window Fadewell
}

settings() {
    "$build/bin/fadewell" >/dev/null || fail 'the settings do not open'
    window 'Fadewell Settings'
}

plays() {
    [[ $("$build/bin/fadewellctl" apps --json | grep -c '"isPlaying": true') -ge $1 ]]
}

call_state() {
    "$build/bin/fadewellctl" call-mode --json | grep -q "\"isDetected\": $1"
}

start_call() {
    app zoom Zoom call "$(command -v pacat)" || fail 'the call app cannot be copied'
    "$demo_apps/zoom" --record --raw --client-name=Zoom >/dev/null 2>"$log/zoom.log" &
    caller=$!
    "$demo_apps/zoom" --playback --raw --client-name=Zoom </dev/zero >>"$log/zoom.log" 2>&1 &
    callee=$!
    await 'the call is not seen' call_state true
}

end_call() {
    kill "$caller" "$callee"
    await 'the call does not end' call_state false
}

take_introduction() {
    restricted_fadewell
    window 'Welcome to Fadewell'
    take onboarding-welcome
    take onboarding-permission Return
    take onboarding-done Tab space
    xdotool key Return
    quit_fadewell
}

take_permission() {
    restricted_fadewell
    await 'the sound server allows it all' grep -q 'No permission' "$log/fadewell.log"
    mixer
    take permission
    quit_fadewell
}

take_mixer() {
    fadewell
    mixer
    take empty
    start_apps "$build" || fail 'the apps cannot be copied'
    await 'the apps do not play' plays 3
    control volume Music 70%
    control volume Radio 35%
    control output Radio Headphones
    control microphone volume 70%
    take light
    control mute Radio on
    control microphone off
    take muted
    control mute Radio off
    control microphone on
    start_call
    take call
    take menu Tab Return
    take outputs Escape Tab Return
    xdotool key Escape Escape
}

take_settings() {
    settings
    take settings-general
    press 205 34
    take settings-calls
    press 294 34
    take settings-apps
    press 385 34
    sleep 0.5
    press 390 112
    xdotool key --delay 150 super+m
    press 390 222
    xdotool key --delay 150 super+Up
    take settings-shortcuts
    quit_fadewell
}

take_languages_and_colours() {
    write_dark_colours
    fadewell "${dark[@]}"
    mixer
    take call-dark
    end_call
    take dark
    settings
    press 205 34
    take settings-dark
    quit_fadewell
    rm "$XDG_CONFIG_HOME/kdeglobals"
    fadewell LC_ALL=ar_EG.UTF-8 LANGUAGE=ar
    start_call
    mixer
    take arabic
    end_call
    quit_fadewell
}

take_many() {
    local name count=0 icons=(music radio podcast)
    for name in Birds Brook Choir Drums Flute Harp Organ Piano Rain Viola Waves Wind; do
        app "demo-${name,,}" "$name" "${icons[count++ % 3]}" "$build/bin/fadewell-demo-player" || fail 'the apps cannot be copied'
        "$demo_apps/demo-${name,,}" radio --name "$name" >/dev/null 2>&1 &
    done
    fadewell
    await 'the many apps do not play' plays 15
    mixer
    take many
    quit_fadewell
}

mkdir -p "$folder" || exit
start_desktop
take_introduction
take_mixer
take_settings
take_languages_and_colours
take_permission
take_many

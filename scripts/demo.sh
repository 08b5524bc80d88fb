#!/bin/bash
# Inside a private session: Fadewell, three playing apps and the live table. Started by ./run.
set -uo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." || exit 1
[[ -n ${FADEWELL_SESSION-} ]] || { echo 'demo: start it with ./run --demo' >&2 && exit 1; }
readonly log=$FADEWELL_SESSION/log
# shellcheck source=scripts/demo-apps.sh
. scripts/demo-apps.sh
# shellcheck source=scripts/screen.sh
. scripts/screen.sh

fail() {
    echo "demo: $1" >&2
    exit 1
}

# Where nobody has a screen: one for pictures, of the mixer and not of the welcome.
prepare_pictures() {
    mkdir -p "$XDG_CONFIG_HOME/fadewell"
    echo '{"hasCompletedOnboarding": {"type": "boolean", "value": true}}' >"$XDG_CONFIG_HOME/fadewell/settings.json"
    start_screen 640x480 || fail 'no screen for the pictures (Xvfb)'
}

# take NAME
take() {
    picture "$pictures/$1.png" || fail "no picture of the screen could be taken: see $log/fadewell.log"
}

take_pictures() {
    local control=build/bin/fadewellctl
    mkdir -p "$pictures"
    until [[ $($control apps --json 2>/dev/null | grep -c '"isPlaying": true') -ge 3 ]] || ((SECONDS > 15)); do
        sleep 0.2
    done
    {
        $control volume Music 70% && $control volume Radio 35% && $control output Radio Headphones
    } >/dev/null || fail 'the demo apps do not answer'
    take mixer
    $control call-mode on >/dev/null && $control microphone off >/dev/null
    take call-mode
    $control call-mode auto >/dev/null && $control microphone on >/dev/null
}

start_fadewell() {
    build/bin/fadewell --show >"$log/fadewell.log" 2>&1 &
    fadewell=$!
    SECONDS=0
    until timeout 5 build/bin/fadewellctl apps >/dev/null 2>&1; do
        if ! kill -0 "$fadewell" 2>/dev/null || ((SECONDS >= 20)); then
            tail -n 20 "$log/fadewell.log" >&2
            fail "Fadewell hasn't started"
        fi
        sleep 0.1
    done
}

# So that a command typed in another terminal reaches this session.
write_control() {
    control=$FADEWELL_SESSION/ctl
    printf '#!/bin/sh\nDBUS_SESSION_BUS_ADDRESS=%s exec %s "$@"\n' \
        "$DBUS_SESSION_BUS_ADDRESS" "$PWD/build/bin/fadewellctl" >"$control"
    chmod 700 "$control"
}

# The table first, which puts the terminal right again; then Fadewell, which gives back every app's own
# path. Ctrl-C doesn't reach them: a shell starts background programs with it ignored.
finish() {
    trap '' INT TERM HUP
    local program
    for program in $table $fadewell $(jobs -p); do
        kill "$program" 2>/dev/null
        wait "$program" 2>/dev/null
    done
}

fadewell='' table='' pictures=$PWD/build/pictures
trap finish EXIT
trap 'exit 0' INT TERM HUP
start_apps build || fail "the demo's apps can't be copied"
hasScreen=${WAYLAND_DISPLAY-}${DISPLAY-}
[[ -n $hasScreen ]] || prepare_pictures
start_fadewell
[[ -n $hasScreen ]] || take_pictures
write_control
[[ -n $hasScreen ]] || {
    echo 'There is no display here; this is what the mixer looks like:'
    printf '    %s\n' "$pictures"/*.png ''
}
cat <<TEXT
The demo session runs: three apps play, on outputs that nobody hears. In another terminal:
    $control volume Music 40%
    $control output Radio Headphones
    $control mute Podcast toggle
The log is in $log. Ctrl-C ends everything.

TEXT
build/bin/fadewell-demo-table < <(exec build/bin/fadewellctl watch --json 2>>"$log/watch.log") &
table=$!
wait "$table"

#!/bin/bash
# Inside a private session: Fadewell, three playing apps and the live table. Started by ./run.
set -uo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." || exit 1
[[ -n ${FADEWELL_SESSION-} ]] || { echo 'demo: start it with ./run --demo' >&2 && exit 1; }
readonly log=$FADEWELL_SESSION/log apps=$FADEWELL_SESSION/apps

fail() {
    echo "demo: $1" >&2
    exit 1
}

# app PROGRAM NAME SOURCE: a program of its own, as an installed app has it, and its desktop entry.
app() {
    cp "$3" "$apps/$1" || fail "$3 can't be copied"
    cat >"$XDG_DATA_HOME/applications/org.example.$2.desktop" <<TEXT
[Desktop Entry]
Type=Application
Name=$2
Exec=$apps/$1
StartupWMClass=$1
TEXT
}

start_apps() {
    local player=build/bin/fadewell-demo-player
    mkdir -p "$apps" "$XDG_DATA_HOME/applications"
    app demo-music Music "$player"
    app demo-radio Radio "$player"
    app demo-podcast Podcast "$(command -v pacat)"
    "$apps/demo-music" music --name Music >"$log/music.log" 2>&1 &
    "$apps/demo-radio" radio --name Radio >"$log/radio.log" 2>&1 &
    "$player" podcast --raw 2>"$log/podcast.log" | "$apps/demo-podcast" --playback --raw \
        --format=float32le --rate=48000 --channels=2 --client-name=Podcast --stream-name=Episode \
        >>"$log/podcast.log" 2>&1 &
}

start_fadewell() {
    build/bin/fadewell --headless >"$log/fadewell.log" 2>&1 &
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

fadewell='' table=''
trap finish EXIT
trap 'exit 0' INT TERM HUP
start_apps
start_fadewell
write_control
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

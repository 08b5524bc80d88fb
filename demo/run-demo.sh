#!/bin/bash
# run-demo.sh BIN [--players]: starts Fadewell on the session of its environment and shows the live table; with
# --players, three players that look like three apps, one of them through the Pulse protocol. Ends all of them.
set -euo pipefail
bin=$1
started=()
finish() {
    local code=$? pid
    trap '' INT TERM HUP
    # Fadewell first, so that it gives every app its sound back.
    for pid in "${started[@]}"; do
        kill -TERM "$pid" 2>/dev/null || continue
        wait "$pid" || true
    done
    exit "$code"
}
trap finish EXIT
trap 'exit 0' INT

desktop_entry() {
    printf '[Desktop Entry]\nType=Application\nName=%s\nExec=%s\nIcon=%s\nCategories=AudioVideo;Audio;\n' \
        "$2" "$3" "$4" >"$XDG_DATA_HOME/applications/$1.desktop"
}

prepare_players() {
    # The Pulse player needs a program file of its own too: a copy of the system's, under another name.
    mkdir -p "$FADEWELL_SESSION/bin"
    cp "$(readlink -f "$(command -v pacat)")" "$FADEWELL_SESSION/bin/demo-podcast"
    desktop_entry demo-music "Demo Music" "$bin/demo-music" audio-x-generic
    desktop_entry demo-radio "Demo Radio" "$bin/demo-radio" multimedia-player
    desktop_entry demo-podcast "Demo Podcast" "$FADEWELL_SESSION/bin/demo-podcast" audio-input-microphone
}

start() {
    setpriv --pdeathsig TERM setsid "$@" </dev/null &
    started+=($!)
}

start_players() {
    start "$bin/demo-music"
    start "$bin/demo-radio"
    mkfifo "$FADEWELL_SESSION/podcast"
    setpriv --pdeathsig TERM setsid "$bin/demo-radio" --stdout demo-podcast >"$FADEWELL_SESSION/podcast" </dev/null &
    started+=($!)
    setpriv --pdeathsig TERM setsid "$FADEWELL_SESSION/bin/demo-podcast" --playback --raw --format=float32le \
        --rate=48000 --channels=2 --client-name="Demo Podcast" --stream-name="Episode 12" \
        <"$FADEWELL_SESSION/podcast" &
    started+=($!)
}

fadewell_answers() {
    timeout 5 "$bin/fadewellctl" outputs --json >/dev/null 2>&1
}

if fadewell_answers; then
    echo "Fadewell runs in this session already; this is its table."
else
    [ "${2:-}" != --players ] || prepare_players
    start "$bin/fadewell" --headless
    fadewell=$!
    end=$((SECONDS + 15))
    until fadewell_answers; do
        kill -0 "$fadewell" 2>/dev/null || { echo "Fadewell ended at its start (see above)." >&2; exit 1; }
        [ "$SECONDS" -lt "$end" ] || { echo "Fadewell does not answer." >&2; exit 1; }
        read -r -t 0.05 <> <(:) || true
    done
    [ "${2:-}" != --players ] || start_players
fi
if [ "${2:-}" = --players ] && [ -t 1 ]; then
    echo "To drive it from another terminal:"
    echo "    DBUS_SESSION_BUS_ADDRESS=$DBUS_SESSION_BUS_ADDRESS $bin/fadewellctl volume music 40%"
    read -r -t 3 <> <(:) || true
fi
setpriv --pdeathsig TERM "$bin/fadewell-demo-table" "$bin/fadewellctl"

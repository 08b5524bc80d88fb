# shellcheck shell=bash
# Sourced inside a private session, in the repository's folder: the apps of the demo, each a program of its own, as
# installed apps are, with a desktop entry and an icon.
demo_apps=$FADEWELL_SESSION/apps
demo_log=$FADEWELL_SESSION/log

# app PROGRAM NAME ICON SOURCE
app() {
    mkdir -p "$demo_apps" "$XDG_DATA_HOME/applications"
    cp "$4" "$demo_apps/$1" || return
    cat >"$XDG_DATA_HOME/applications/org.example.$2.desktop" <<TEXT
[Desktop Entry]
Type=Application
Name=$2
Icon=$PWD/demo/icons/$3.svg
Exec=$demo_apps/$1
StartupWMClass=$1
TEXT
}

# start_apps BUILD
start_apps() {
    local player=$1/bin/fadewell-demo-player
    app demo-music Music music "$player" && app demo-radio Radio radio "$player" &&
        app demo-podcast Podcast podcast "$(command -v pacat)" || return
    "$demo_apps/demo-music" music --name Music >"$demo_log/music.log" 2>&1 &
    "$demo_apps/demo-radio" radio --name Radio >"$demo_log/radio.log" 2>&1 &
    "$player" podcast --raw 2>"$demo_log/podcast.log" | "$demo_apps/demo-podcast" --playback --raw \
        --format=float32le --rate=48000 --channels=2 --client-name=Podcast --stream-name=Episode \
        >>"$demo_log/podcast.log" 2>&1 &
}

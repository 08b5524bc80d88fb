# shellcheck shell=bash
# Sourced inside a private session: a screen that only pictures are taken of.

# start_screen SIZE
start_screen() {
    Xvfb -displayfd 1 -screen 0 "$1x24" -nolisten tcp -noreset >"$FADEWELL_SESSION/display" 2>"$FADEWELL_SESSION/log/screen.log" &
    SECONDS=0
    until [[ -s $FADEWELL_SESSION/display ]]; do
        ((SECONDS < 10)) || return
        sleep 0.1
    done
    DISPLAY=:$(<"$FADEWELL_SESSION/display")
    export DISPLAY QT_QUICK_BACKEND=software
}

# picture FILE: of the window that has the keyboard, once two looks at it show the same.
picture() {
    local last='' now
    SECONDS=0
    while now=$(scrot --focused --overwrite --quality 20 "$1" 2>/dev/null && cksum <"$1") && [[ $now != "$last" ]]; do
        last=$now
        ((SECONDS < 10)) || break
        sleep 0.7
    done
    [[ -s $1 ]]
}

#!/bin/bash
# A private sound session: its own folders, session bus, PipeWire, WirePlumber and pipewire-pulse.
#
#   scripts/session.sh run [options] -- COMMAND [ARGUMENT…]
#   scripts/session.sh hold [options]
#
# The session and everything that was started inside it end with COMMAND. Inside the session
# FADEWELL_SESSION names its folder, which holds log/NAME.log and pid/NAME for each of its programs
# (bus, pipewire, wireplumber, pipewire-pulse).
set -uo pipefail

self=$(readlink -f "${BASH_SOURCE[0]}")
readonly self
readonly startLimit=20 # seconds until a session that isn't up is given up
readonly endLimit=5    # seconds between asking a program to end and ending it

usage() {
    cat <<'TEXT'
Usage: scripts/session.sh run [options] -- COMMAND [ARGUMENT…]
       scripts/session.sh hold [options]

run    runs COMMAND inside a private sound session and ends with its exit code
hold   prints the environment of such a session (KEY=VALUE lines, then an empty one), for a program
       that enters it itself, and keeps it until standard input ends

Options:
  --outputs "A,B"  the outputs, by description; the first is the default (Speakers,Headphones).
                   The node name is the description in lower case, with dashes for spaces.
                   "A:PROPERTY = VALUE" adds a property, to pass for another kind of output.
  --quantum N      a fixed quantum, in frames
  --rate N         a fixed sample rate, in Hz
  --no-pulse       no PulseAudio server
The session has one microphone, node name "microphone".
TEXT
}

fail() {
    echo "session: $*" >&2
    exit 1
}

# --- The folder and its configuration -----------------------------------------------------------

make_folders() {
    # A socket's path has room for 107 characters, and a deep TMPDIR uses them up.
    local parent=${TMPDIR:-/tmp}
    ((${#parent} <= 50)) && [[ -w $parent ]] || parent=/tmp
    dir=$(mktemp -d "$parent/session-XXXXXXXX") || fail "no folder can be made in $parent"
    mkdir -m 700 "$dir"/{run,config,state,data,cache,home,log,pid}
}

node_name() {
    local name=${1,,}
    echo "${name//[^a-z0-9]/-}"
}

# A text inside quotes of a PipeWire configuration file.
quoted() {
    local text=${1//\\/\\\\}
    echo "\"${text//\"/\\\"}\""
}

write_pipewire_config() {
    local folder=$dir/config/pipewire/pipewire.conf.d priority=2000 output name
    mkdir -p "$folder"
    {
        echo 'context.properties = {'
        [[ -n $rate ]] && echo "    default.clock.rate = $rate default.clock.allowed-rates = [ $rate ]"
        [[ -n $quantum ]] && echo "    default.clock.quantum = $quantum" \
            "default.clock.min-quantum = $quantum default.clock.max-quantum = $quantum"
        echo '}'
        echo 'context.objects = ['
        while IFS= read -r -d , output; do
            name=${output%%:*}
            echo "  { factory = adapter args = { factory.name = support.null-audio-sink" \
                "node.name = $(quoted "$(node_name "$name")") node.description = $(quoted "$name")" \
                "media.class = Audio/Sink audio.position = [ FL FR ] ${output:${#name}+1}" \
                "monitor.channel-volumes = true priority.session = $priority } }"
            ((priority -= 10))
        done <<<"$outputs,"
        echo '  { factory = adapter args = { factory.name = support.null-audio-sink' \
            'node.name = "microphone" node.description = "Built-in Microphone"' \
            'media.class = Audio/Source/Virtual audio.position = [ MONO ] priority.session = 2000 } }'
        echo ']'
    } >"$folder/10-session.conf"
}

# Sound cards, Bluetooth and cameras belong to the user's own session: this one leaves them alone.
write_wireplumber_config() {
    local folder=$dir/config/wireplumber
    mkdir -p "$folder"/{main,bluetooth}.lua.d "$folder/wireplumber.conf.d"
    local monitor
    for monitor in alsa_monitor v4l2_monitor libcamera_monitor; do
        echo "if $monitor then $monitor.enabled = false end"
    done >"$folder/main.lua.d/80-session.lua"
    echo 'if bluez_monitor then bluez_monitor.enabled = false end' \
        >"$folder/bluetooth.lua.d/80-session.lua"
    cat >"$folder/wireplumber.conf.d/80-session.conf" <<'TEXT'
wireplumber.profiles = {
  main = {
    hardware.audio = disabled hardware.bluetooth = disabled hardware.video-capture = disabled
  }
}
TEXT
}

# Without service folders, so that nothing of the desktop is activated on this bus.
write_bus_config() {
    cat >"$dir/config/bus.conf" <<TEXT
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=$dir/run/bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
TEXT
}

enter_environment() {
    export FADEWELL_SESSION=$dir HOME=$dir/home
    export XDG_RUNTIME_DIR=$dir/run XDG_CONFIG_HOME=$dir/config XDG_STATE_HOME=$dir/state
    export XDG_DATA_HOME=$dir/data XDG_CACHE_HOME=$dir/cache
    export DBUS_SESSION_BUS_ADDRESS=unix:path=$dir/run/bus
    export PULSE_SERVER=unix:$dir/run/pulse/native
    unset PIPEWIRE_REMOTE PIPEWIRE_RUNTIME_DIR PIPEWIRE_CONFIG_DIR PIPEWIRE_CONFIG_NAME PIPEWIRE_NODE
    unset PIPEWIRE_QUANTUM PIPEWIRE_LATENCY PIPEWIRE_RATE PIPEWIRE_PROPS WIREPLUMBER_CONFIG_DIR
    unset PULSE_RUNTIME_PATH PULSE_SINK PULSE_SOURCE PULSE_COOKIE PULSE_CLIENTCONFIG
    unset NOTIFY_SOCKET LISTEN_FDS LISTEN_PID INVOCATION_ID JOURNAL_STREAM
}

# --- The programs -------------------------------------------------------------------------------

# start NAME PROGRAM…: in a session of its own, so that Ctrl-C reaches only COMMAND; the signal at
# the parent's death is a second net below the janitor's.
start() {
    local name=$1
    shift
    DBUS_SYSTEM_BUS_ADDRESS=unix:path=$dir/run/no-system-bus \
        setsid setpriv --pdeathsig TERM -- "$@" {alive}>&- </dev/null >"$dir/log/$name.log" 2>&1 &
    echo $! >"$dir/pid/$name"
}

# await NAME TEST…: until TEST succeeds; fails when program NAME has ended or the time is up.
await() {
    local name=$1
    shift
    until "$@"; do
        kill -0 "$(<"$dir/pid/$name")" 2>/dev/null || give_up "$name has ended"
        ((SECONDS < startLimit)) || give_up "$name isn't up after $startLimit s"
        sleep 0.02
    done
}

give_up() {
    tail -n 20 "$dir"/log/*.log >&2
    fail "$1"
}

default_devices_chosen() {
    local text
    text=$(timeout 2 pw-metadata 0 2>/dev/null </dev/null)
    [[ $text == *"'default.audio.sink'"* && $text == *"'default.audio.source'"* ]]
}

pulse_answers() {
    timeout 2 pactl info >/dev/null 2>&1 </dev/null
}

start_session() {
    SECONDS=0
    start bus dbus-daemon --nofork --nopidfile --config-file="$dir/config/bus.conf"
    start pipewire pipewire
    await bus test -S "$dir/run/bus"
    await pipewire test -S "$dir/run/pipewire-0"
    start wireplumber wireplumber
    [[ -n $pulse ]] && start pipewire-pulse pipewire-pulse
    await wireplumber default_devices_chosen
    [[ -z $pulse ]] || await pipewire-pulse pulse_answers
}

# --- The end ------------------------------------------------------------------------------------

# Every process that was started inside the session carries its folder in the environment.
session_processes() {
    grep -lzxFs "FADEWELL_SESSION=$dir" /proc/[0-9]*/environ | cut -d/ -f3
}

end_processes() {
    local signal=TERM processes
    SECONDS=0
    while processes=$(session_processes); [[ -n $processes ]]; do
        # shellcheck disable=SC2086 # one argument per process
        kill -s "$signal" $processes 2>/dev/null
        sleep 0.05
        ((SECONDS < endLimit)) || signal=KILL
        ((SECONDS < 3 * endLimit)) || break
    done
}

# Ends the session when its input ends, which is when the script has let go of it or has died.
janitor() {
    trap '' INT TERM HUP PIPE
    dir=$1
    [[ $dir == */session-* && -d $dir/pid ]] || fail "'$dir' is not a session's folder"
    read -r
    end_processes
    rm -rf "$dir"
}

leave() {
    exec {alive}>&-
    wait "$janitor"
    rm -rf "$dir"
}

# pass_on SIGNAL: to COMMAND; what has not ended in time is ended.
pass_on() {
    interrupted=$1
    [[ -n $command ]] || exit $((128 + $(kill -l "$1")))
    # Ctrl-C on a terminal has reached COMMAND already, and a second one often means "at once".
    [[ $1 == INT && -t 0 ]] || kill -s "$1" "$command" 2>/dev/null
    local until=$((SECONDS + 2 * endLimit))
    while kill -0 "$command" 2>/dev/null; do
        ((SECONDS < until)) || kill -s KILL "$command" 2>/dev/null
        sleep 0.05
    done
}

run_command() {
    # A shell starts background programs with Ctrl-C ignored; COMMAND is a foreground program.
    env --default-signal=INT,QUIT setpriv --pdeathsig TERM -- "$@" {alive}>&- <&0 &
    command=$!
    local code
    while :; do
        interrupted=
        wait "$command"
        code=$?
        [[ -n $interrupted ]] || return "$code"
    done
}

open_session() {
    make_folders
    mkfifo -m 600 "$dir/alive"
    setsid "$self" janitor "$dir" <"$dir/alive" &
    janitor=$!
    exec {alive}>"$dir/alive"
    trap leave EXIT
    local signal
    # shellcheck disable=SC2064 # the signal's name is meant to be filled in now
    for signal in INT TERM HUP; do trap "pass_on $signal" "$signal"; done
    write_pipewire_config
    write_wireplumber_config
    write_bus_config
    enter_environment
    start_session
}

print_environment() {
    printenv | grep -E '^(FADEWELL_SESSION|HOME|XDG_(RUNTIME_DIR|(CONFIG|STATE|DATA|CACHE)_HOME)|DBUS_SESSION_BUS_ADDRESS|PULSE_SERVER)='
    echo
}

hold() {
    open_session
    print_environment
    run_command cat >/dev/null
}

run() {
    open_session
    run_command "$@"
}

outputs=Speakers,Headphones rate='' quantum='' pulse=yes
command='' interrupted='' dir='' janitor='' alive=''

number() {
    [[ $1 =~ ^[1-9][0-9]{0,6}$ ]] || fail "'$1' is not a number of $2"
    echo "$1"
}

case ${1-} in
janitor) janitor "$2" && exit ;;
-h | --help | help) usage && exit ;;
run | hold) mode=$1 && shift ;;
*) usage >&2 && exit 2 ;;
esac
while (($#)); do
    [[ $1 != --@(outputs|quantum|rate) || $# -ge 2 ]] || { usage >&2 && exit 2; }
    case $1 in
    --outputs) outputs=${2-} && shift 2 ;;
    --quantum) quantum=$(number "${2-}" frames) || exit && shift 2 ;;
    --rate) rate=$(number "${2-}" Hz) || exit && shift 2 ;;
    --no-pulse) pulse='' && shift ;;
    --) shift && break ;;
    *) usage >&2 && exit 2 ;;
    esac
done
[[ $mode == hold && $# == 0 ]] || [[ $mode == run && $# -gt 0 ]] || { usage >&2 && exit 2; }
[[ $outputs =~ ^[^,]+(,[^,]+)*$ ]] || fail "--outputs needs at least one name"
"$mode" "$@"

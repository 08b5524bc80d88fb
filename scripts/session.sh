#!/bin/bash
# A private sound session: its own folders, bus, PipeWire, WirePlumber and pipewire-pulse, with null outputs and
# a microphone. Everything it started ends with it, whatever ends it, and nothing of the user's is touched.
set -euo pipefail

usage() {
    cat <<'TEXT'
Usage: scripts/session.sh run [OPTIONS] -- COMMAND [ARGUMENT...]
       scripts/session.sh hold [OPTIONS]

run    starts a private session, runs COMMAND inside it, ends everything; the exit code is COMMAND's
hold   starts one, prints its environment (KEY=VALUE lines, then an empty one) and keeps it
       until standard input is closed

  --outputs A,B    names of the outputs (default Speakers,Headphones); the first is the default
  --quantum N      frames in a cycle (default 1024)
  --rate N         sample rate (default 48000)
  --no-pulse       without pipewire-pulse
  --keep-log FILE  copy what the servers wrote to FILE at the end
  --help           this text
Inside, FADEWELL_SESSION is the session's folder.
TEXT
}

die() {
    echo "session: $*" >&2
    exit 1
}

outputs=Speakers,Headphones quantum=1024 rate=48000 pulse=yes keep_log=
mode=${1:---help}
shift || true
case "$mode" in run | hold) ;; -h | --help) usage; exit 0 ;; *) usage >&2; exit 2 ;; esac
while [ $# -gt 0 ]; do
    case "$1" in
    --outputs) outputs=${2:?} && shift 2 ;;
    --quantum) quantum=${2:?} && shift 2 ;;
    --rate) rate=${2:?} && shift 2 ;;
    --keep-log) keep_log=${2:?} && shift 2 ;;
    --no-pulse) pulse=no && shift ;;
    --help | -h) usage; exit 0 ;;
    --) shift; break ;;
    *) usage >&2; die "unknown option $1" ;;
    esac
done
[[ $quantum =~ ^[0-9]+$ && $rate =~ ^[0-9]+$ ]] || die "--quantum and --rate are numbers"
[[ $outputs =~ ^[A-Za-z0-9_,\ -]+$ ]] || die "--outputs takes names of letters, digits, spaces, - and _"
[ "$mode" = hold ] || [ $# -gt 0 ] || { usage >&2; die "no COMMAND given"; }

session=$(mktemp -d "${TMPDIR:-/tmp}/fadewell-session.XXXXXX")
session=$(cd "$session" && pwd -P)
log=$session/log
: >"$log"

# The cleaner outlives this script, even its kill -9: it wakes when the last writer of its pipe is gone. A process
# is the session's own when its environment names the session's folder, which no other process's can.
cleaner() {
    trap '' INT TERM HUP PIPE
    cat >/dev/null
    local signal environment pid found
    for signal in TERM TERM TERM KILL KILL; do
        found=
        for environment in /proc/[0-9]*/environ; do
            pid=${environment#/proc/}
            pid=${pid%/environ}
            [ "$pid" != "$BASHPID" ] || continue
            if grep -qzxF "XDG_RUNTIME_DIR=$session/runtime" "$environment" 2>/dev/null; then
                if kill -s "$signal" "$pid" 2>/dev/null; then found=yes; fi
            fi
        done
        [ -n "$found" ] || break
        read -r -t 0.2 <> <(:) || true
    done
    [ -z "$keep_log" ] || cp "$log" "$keep_log" || true
    rm -rf "$session"
}
exec {alive}> >(exec </dev/stdin; cleaner >/dev/null 2>&1)
cleaner_pid=$!
finish() {
    local code=$?
    trap '' INT TERM HUP
    exec {alive}>&-
    wait "$cleaner_pid" 2>/dev/null || true
    exit "$code"
}
trap finish EXIT

# Nothing of the caller's session may leak in.
for name in $(compgen -e | grep -E '^(PIPEWIRE_|PULSE_|DBUS_|SDL_AUDIO|JACK_|WIREPLUMBER_|SPA_)' || true); do
    unset "$name"
done
if [ -n "${WAYLAND_DISPLAY:-}" ] && [[ $WAYLAND_DISPLAY != /* ]]; then
    export WAYLAND_DISPLAY="${XDG_RUNTIME_DIR:-}/$WAYLAND_DISPLAY" # a name is looked up in the runtime folder
fi
unset XDG_CONFIG_DIRS XDG_SESSION_ID
export FADEWELL_SESSION=$session HOME=$session/home XDG_RUNTIME_DIR=$session/runtime XDG_CONFIG_HOME=$session/config
export XDG_STATE_HOME=$session/state XDG_DATA_HOME=$session/data XDG_CACHE_HOME=$session/cache
export XDG_DATA_DIRS=${XDG_DATA_DIRS:-/usr/local/share:/usr/share}
export DBUS_SESSION_BUS_ADDRESS=unix:path=$session/runtime/bus
umask 077
mkdir -p "$HOME" "$XDG_RUNTIME_DIR" "$XDG_STATE_HOME" "$XDG_DATA_HOME/applications" "$XDG_CACHE_HOME" \
    "$XDG_CONFIG_HOME/pipewire/pipewire.conf.d" "$XDG_CONFIG_HOME/wireplumber/main.lua.d" \
    "$XDG_CONFIG_HOME/wireplumber/bluetooth.lua.d" "$XDG_CONFIG_HOME/wireplumber/wireplumber.conf.d"

# node_name "Left Speakers" -> left-speakers
node_name() { echo "${1,,}" | tr ' ' '-'; }

write_pipewire_config() {
    local output priority=1200
    cat <<CONF
context.properties = {
    default.clock.rate = $rate
    default.clock.allowed-rates = [ $rate ]
    default.clock.quantum = $quantum
    default.clock.min-quantum = $quantum
    default.clock.max-quantum = $quantum
    vm.overrides = { default.clock.min-quantum = $quantum }
}
context.spa-libs = { audiotestsrc = audiotestsrc/libspa-audiotestsrc }
context.objects = [
CONF
    IFS=, read -ra names <<<"$outputs"
    for output in "${names[@]}"; do
        cat <<CONF
    { factory = adapter args = {
        factory.name = support.null-audio-sink media.class = Audio/Sink audio.position = [ FL FR ]
        node.name = "$(node_name "$output")" node.description = "$output" node.nick = "$output"
        device.bus = pci priority.session = $priority priority.driver = $priority object.linger = true } }
CONF
        priority=$((priority - 100))
    done
    cat <<'CONF'
    { factory = adapter args = {
        factory.name = audiotestsrc media.class = Audio/Source audio.channels = 1 audio.position = [ MONO ]
        node.name = microphone node.description = "Microphone" node.nick = "Microphone" device.bus = pci
        node.param.Props = { volume = 0.02 } priority.session = 1000 object.linger = true } }
]
CONF
}

# Without hardware: a monitor would take the user's own devices, and complains where there is no system bus.
write_wireplumber_config() {
    local folder=$XDG_CONFIG_HOME/wireplumber
    printf '%s.enabled = false\n' alsa_monitor v4l2_monitor libcamera_monitor >"$folder/main.lua.d/51-no-hardware.lua"
    echo 'bluez_monitor.enabled = false' >"$folder/bluetooth.lua.d/51-no-hardware.lua"
    cat >"$folder/wireplumber.conf.d/51-no-hardware.conf" <<'CONF'
wireplumber.profiles = {
    main = {
        hardware.audio = disabled
        hardware.bluetooth = disabled
        hardware.video-capture = disabled
        support.logind = disabled
        support.portal-permissionstore = disabled
    }
}
CONF
}

# start NAME COMMAND...: a server of the session, away from the terminal's Ctrl-C, that dies with this script.
start() {
    local name=$1
    shift
    setpriv --pdeathsig TERM setsid "$@" {alive}>&- </dev/null >>"$log" 2>&1 &
    servers+=("$name:$!")
}

# await WHAT COMMAND...: until COMMAND succeeds; gives up after a minute or when a server has died.
await() {
    local what=$1 end=$((SECONDS + 60)) server
    shift
    until timeout 5 "$@" >/dev/null 2>&1; do
        for server in "${servers[@]}"; do
            kill -0 "${server#*:}" 2>/dev/null || { tail -n 20 "$log" >&2; die "${server%:*} ended at its start"; }
        done
        [ "$SECONDS" -lt "$end" ] || { tail -n 20 "$log" >&2; die "no $what within a minute"; }
        read -r -t 0.03 <> <(:) || true
    done
}

outputs_ready() {
    local ports output
    ports=$(pw-link --input)
    IFS=, read -ra names <<<"$outputs"
    for output in "${names[@]}"; do
        grep -qF "$(node_name "$output"):playback_FR" <<<"$ports" || return 1
    done
    pw-metadata 0 default.audio.sink | grep -qF "\"$(node_name "${names[0]}")\""
}
export -f outputs_ready node_name
export outputs

for command in dbus-daemon pipewire wireplumber setpriv setsid pw-link pw-metadata; do
    command -v "$command" >/dev/null || die "$command is not installed (see scripts/packages.sh)"
done
servers=()
write_pipewire_config >"$XDG_CONFIG_HOME/pipewire/pipewire.conf.d/50-session.conf"
write_wireplumber_config
start dbus-daemon dbus-daemon --session --nofork --nopidfile --nosyslog "--address=$DBUS_SESSION_BUS_ADDRESS"
await "message bus" test -S "$XDG_RUNTIME_DIR/bus"
start pipewire pipewire
await "sound server" test -S "$XDG_RUNTIME_DIR/pipewire-0"
start wireplumber wireplumber
[ $pulse = no ] || start pipewire-pulse pipewire-pulse
await "outputs" bash -c outputs_ready
[ $pulse = no ] || await "Pulse server" pactl info
unset outputs
export -nf outputs_ready node_name

if [ "$mode" = hold ]; then
    compgen -e | grep -E '^(FADEWELL_SESSION|HOME|XDG_(RUNTIME_DIR|CONFIG_HOME|STATE_HOME|DATA_HOME|CACHE_HOME|DATA_DIRS)|DBUS_SESSION_BUS_ADDRESS|WAYLAND_DISPLAY)$' |
        while read -r name; do echo "$name=${!name}"; done
    echo
    exec >/dev/null
    cat >/dev/null || true
else
    code=0
    setpriv --pdeathsig TERM "$@" {alive}>&- || code=$?
    exit "$code"
fi

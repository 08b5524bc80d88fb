# shellcheck shell=bash
# Sourced by setup.sh: what sound the person who calls us has, so that none of it is disturbed.

runtime_folder() {
    echo "${XDG_RUNTIME_DIR:-/run/user/$EUID}"
}

# Does a process of this name belong to the caller?
own_process() {
    local comm
    for comm in $(grep -lsx "$1" /proc/[0-9]*/comm); do
        [[ -O ${comm%/comm} ]] && return 0
    done
    return 1
}

# Prints pipewire, pulseaudio (also where PipeWire runs beside it, for video only) or none.
sound_of_session() {
    local folder
    folder=$(runtime_folder)
    if own_process pulseaudio; then
        echo pulseaudio
    elif [[ -S ${PIPEWIRE_RUNTIME_DIR:-$folder}/${PIPEWIRE_REMOTE:-pipewire-0} ]] &&
        own_process pipewire; then
        echo pipewire
    else
        echo none
    fi
}

# Installing these beside a running PulseAudio changes the desktop's sound at the next login.
refuse_sound_switch() {
    [[ " $* " == *" pipewire-pulse "* || " $* " == *" wireplumber "* ]] || return 0
    [[ $(sound_of_session) != pulseaudio ]] || explain_pulseaudio
}

explain_pulseaudio() {
    fail "This desktop's sound runs on PulseAudio, and Fadewell works on PipeWire." \
        'To switch over (PulseAudio programs go on working), install these and log in again:' \
        '    sudo apt-get install pipewire-audio wireplumber pipewire-pulse' \
        'Nothing has been changed.'
}

# Root has no access to the caller's sound, and what it builds would no longer belong to the caller.
refuse_sudo_on_desktop() {
    ((EUID == 0)) && [[ -n ${SUDO_USER-} && $SUDO_USER != root ]] || return 0
    local folder
    folder=/run/user/$(id -u "$SUDO_USER" 2>/dev/null)
    [[ -S $folder/pipewire-0 || -S $folder/pulse/native ]] || return 0
    fail "This is the desktop of $SUDO_USER: as root Fadewell would not reach its sound, and would leave" \
        "files behind that belong to root. Start it without sudo; it asks for it when it has to install."
}

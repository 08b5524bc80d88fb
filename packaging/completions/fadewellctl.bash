# Bash completion for fadewellctl. Apps and outputs come from the running instance; without one
# only the fixed words complete.

# Adds the lines of standard input that begin with the typed word, quoted for the shell.
_fadewellctl_words() {
    local typed=$1 line
    while IFS= read -r line; do
        if [[ ${line,,} == "${typed,,}"* ]]; then
            COMPREPLY+=("$(printf '%q' "$line")")
        fi
    done
}

_fadewellctl_live() {
    _fadewellctl_words "$2" < <(fadewellctl complete "$1" 2>/dev/null)
}

# Positional arguments after the subcommand, up to the typed word, options left out.
_fadewellctl_position() {
    local index count=0
    for ((index = $1 + 1; index < COMP_CWORD; index++)); do
        [[ ${COMP_WORDS[index]} == --* ]] || ((count++))
    done
    echo "$count"
}

_fadewellctl() {
    local commands="apps outputs volume mute output forget microphone call-mode call-settings toggle-microphone toggle-call-mode raise-frontmost lower-frontmost permission login-item doctor diagnostics watch show settings quit"
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local index command="" start=0
    COMPREPLY=()
    for ((index = 1; index < COMP_CWORD; index++)); do
        if [[ ${COMP_WORDS[index]} != -* ]]; then
            command=${COMP_WORDS[index]}
            start=$index
            break
        fi
    done
    if [[ -z $command ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$commands --json --help --version" -- "$current")
        return
    fi
    case $previous in
    --exclude | --include)
        _fadewellctl_live call-apps "$current"
        return
        ;;
    --automatic)
        mapfile -t COMPREPLY < <(compgen -W "on off" -- "$current")
        return
        ;;
    --level)
        return
        ;;
    esac
    if [[ $current == -* ]]; then
        local options="--json --help"
        [[ $command == forget ]] && options+=" --all"
        [[ $command == diagnostics ]] && options+=" --without-names"
        [[ $command == call-settings ]] && options+=" --automatic --level --exclude --include"
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
        return
    fi
    case $command:$(_fadewellctl_position "$start") in
    volume:0 | mute:0 | output:0 | forget:0)
        _fadewellctl_live apps "$current"
        ;;
    mute:1)
        mapfile -t COMPREPLY < <(compgen -W "on off toggle" -- "$current")
        ;;
    output:1)
        _fadewellctl_words "$current" < <(
            echo system
            fadewellctl complete outputs 2>/dev/null
        )
        ;;
    microphone:0)
        mapfile -t COMPREPLY < <(compgen -W "on off toggle volume" -- "$current")
        ;;
    login-item:0)
        mapfile -t COMPREPLY < <(compgen -W "on off" -- "$current")
        ;;
    call-mode:0)
        mapfile -t COMPREPLY < <(compgen -W "on off toggle auto" -- "$current")
        ;;
    esac
}

complete -F _fadewellctl fadewellctl

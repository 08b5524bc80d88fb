# shellcheck shell=bash
# Sourced by ./run, ./test and .ci/run, which set FADEWELL_ROOT: sees to it that the packages they need
# are installed, saying which and why, and builds.
# shellcheck source=packages.sh
. "$FADEWELL_ROOT/scripts/packages.sh"
# shellcheck source=desktop.sh
. "$FADEWELL_ROOT/scripts/desktop.sh"

fail() {
    printf '%s\n' "$@" >&2
    exit 1
}

# A fresh system has no locale, or names one that it doesn't have; names and tables need UTF-8.
choose_locale() {
    if [[ -z ${LC_ALL-}${LC_CTYPE-}${LANG-} ]]; then
        export LANG=C.UTF-8
    elif [[ -n $(locale 2>&1 >/dev/null) ]]; then
        export LC_ALL=C.UTF-8
    fi
}

# packages_of GROUP…: their "package|reason" lines.
packages_of() {
    local group package reason
    while IFS='|' read -r group package reason; do
        [[ " $* " != *" $group "* ]] || echo "$package|$reason"
    done < <(fadewell_packages)
}

# missing_of GROUP…: those of their packages that aren't installed, found with one call.
missing_of() {
    local names installed
    names=$(packages_of "$@" | cut -d'|' -f1)
    # shellcheck disable=SC2086,SC2016 # one argument a package; the format is dpkg's own
    installed=$(dpkg-query --show --showformat='${db:Status-Status} ${Package}\n' $names 2>/dev/null |
        sed -n 's/^installed //p')
    grep -vxF -e "$installed" <<<"$names"
}

require_debian() {
    local name='this system' id='' version=''
    if [[ -r /etc/os-release ]]; then
        # shellcheck source=/dev/null
        IFS='|' read -r name id version < <(. /etc/os-release &&
            echo "${PRETTY_NAME:-${NAME-}}|${ID-}|${VERSION_ID-}")
    fi
    local known='Fadewell is set up by itself on Debian 12 or newer and on Ubuntu 24.04 or newer.'
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        fail "$known $name has no apt." "Install what corresponds to these, and build with" \
            "    cmake --preset release && ninja -C build" "$(packages_of build run | tr '|' '\t')"
    fi
    case $id:${version%%.*} in
    debian:? | debian:10 | debian:11 | ubuntu:1? | ubuntu:20 | ubuntu:22)
        fail "$known The libraries of $name are too old." ;;
    esac
}

# Prints the words that put root's rights before a command.
root_prefix() {
    if ((EUID == 0)); then
        echo env
    elif command -v sudo >/dev/null &&
        { sudo -n true 2>/dev/null || { [[ -t 0 ]] && sudo -v >&2; }; }; then
        echo sudo env
    else
        return 1
    fi
}

# install PACKAGE…
install() {
    local command="apt-get install --yes --no-install-recommends $*" prefix log
    prefix=$(root_prefix) || fail "Installing needs root's rights, and sudo doesn't give them to you here." \
        'Have this run as root, then start again:' "    apt-get update && $command"
    local apt="$prefix DEBIAN_FRONTEND=noninteractive APT_LISTCHANGES_FRONTEND=none NEEDRESTART_SUSPEND=1"
    local options='-qq -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=120 -o Acquire::Retries=3'
    echo 'Installing them, which takes some minutes …'
    log=$(mktemp) || fail 'No temporary file can be made.'
    # A container has no package lists, and old lists name versions that are gone: both end here.
    # shellcheck disable=SC2086 # words
    if ! $apt $command $options >"$log" 2>&1; then
        echo 'Fetching the package lists …'
        if ! { $apt apt-get update $options && $apt $command $options; } >"$log" 2>&1; then
            tail -n 20 "$log" >&2
            rm -f "$log"
            fail 'The installation failed, see above. The command was:' "    $command"
        fi
    fi
    rm -f "$log"
}

# setup GROUP…: installs what is missing of them.
setup() {
    choose_locale
    require_debian
    local missing package reason
    mapfile -t missing < <(missing_of "$@")
    ((${#missing[@]})) || return 0
    refuse_sound_switch "${missing[@]}"
    echo "${#missing[@]} packages are missing:"
    packages_of "$@" | while IFS='|' read -r package reason; do
        [[ " ${missing[*]} " != *" $package "* ]] || printf '    %-22s %s\n' "$package" "$reason"
    done
    install "${missing[@]}"
}

# build PRESET FOLDER [TARGET…]: configures if needed, and builds; says nothing when all is built.
build() {
    local preset=$1 folder=$2 quiet=
    shift 2
    cd "$FADEWELL_ROOT" || exit 1
    # CMake's own files are watched by the build; the presets are not.
    if [[ ! -f $folder/build.ninja || CMakePresets.json -nt $folder/build.ninja ]]; then
        echo "Configuring $folder …"
        cmake --preset "$preset" >/dev/null || fail "Configuring the preset $preset failed."
        touch "$folder/build.ninja"
    fi
    [[ $(ninja -C "$folder" -n "$@" 2>/dev/null) != *'no work to do'* ]] || return 0
    echo "Building in $folder …"
    [[ -t 1 ]] || quiet=--quiet
    ninja -C "$folder" $quiet "$@" || fail "Building the preset $preset failed."
}

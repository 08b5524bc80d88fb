# shellcheck shell=bash
# Sourced by run, test and .ci/run: makes sure that what they need is installed, and says what and why.
# shellcheck source=packages.sh
. "$FADEWELL_ROOT/scripts/packages.sh"

# A fresh system may have no locale at all; the build and the tests want UTF-8.
[ "$(locale charmap 2>/dev/null)" = UTF-8 ] || export LC_ALL=C.UTF-8

fail() {
    printf '%s\n' "$@" >&2
    exit 1
}

# packages_of GROUP...: "package|reason" lines of these groups.
packages_of() {
    local wanted=" $* " group package reason
    fadewell_packages | while IFS='|' read -r group package reason; do
        case "$wanted" in *" $group "*) echo "$package|$reason" ;; esac
    done
}

# missing_of GROUP...: names of their packages that are not installed, asked in one call.
missing_of() {
    local names installed
    names=$(packages_of "$@" | cut -d'|' -f1)
    # shellcheck disable=SC2086,SC2016  # one argument a name; the format is dpkg's own
    installed=$(dpkg-query --show --showformat='${db:Status-Status} ${Package}\n' $names 2>/dev/null |
        sed -n 's/^installed //p')
    printf '%s\n' "$names" | grep -vxF -e "$installed" || true
}

require_debian() {
    command -v dpkg-query >/dev/null && command -v apt-get >/dev/null && return 0
    local system="this system"
    # shellcheck source=/dev/null
    [ -r /etc/os-release ] && system=$(. /etc/os-release && echo "${PRETTY_NAME:-$NAME}")
    fail "Fadewell's setup knows Debian 12 and newer, and Ubuntu 24.04 and newer; $system has no apt." \
        "Install the equivalents of these yourself and build with: cmake --preset release && ninja -C build" \
        "$(packages_of build run | tr '|' ' ' | sed 's/^/    /')"
}

# Prints the command prefix that gives root's rights ("env" when they are there already).
root_prefix() {
    if [ "$(id -u)" = 0 ]; then
        echo env
    elif command -v sudo >/dev/null && { sudo -n true 2>/dev/null || { [ -t 0 ] && sudo -v >&2; }; }; then
        echo sudo env
    else
        return 1
    fi
}

install_missing() {
    local missing="$1" as_root install
    install="apt-get install --yes --no-install-recommends $(echo "$missing" | tr '\n' ' ')"
    as_root=$(root_prefix) || fail "" \
        "Installing needs root's rights, and there is no sudo that works for you here." \
        "Ask an administrator to run this, then start again:" "    apt-get update && $install"
    local quiet="$as_root DEBIAN_FRONTEND=noninteractive APT_LISTCHANGES_FRONTEND=none"
    local options="-o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=120 -o Acquire::Retries=3 -qq"
    local log
    log=$(mktemp)
    # Lists may be absent (containers) or too old (the versions they name are gone): fetch them once, then try again.
    # shellcheck disable=SC2086
    if ! $quiet $install $options >"$log" 2>&1; then
        echo "Refreshing the package lists ..."
        if ! { $quiet apt-get update $options && $quiet $install $options; } >"$log" 2>&1; then
            tail -n 20 "$log" >&2
            rm -f "$log"
            fail "" "The installation failed (see above). The command was:" "    $install"
        fi
    fi
    rm -f "$log"
}

# The bus refuses clients of a machine without an identity, as in a fresh container.
ensure_machine_id() {
    [ -s /etc/machine-id ] || [ -s /var/lib/dbus/machine-id ] && return 0
    local as_root
    as_root=$(root_prefix) || return 0
    echo "Giving this machine an id (/etc/machine-id): the message bus needs one"
    $as_root dbus-uuidgen --ensure=/etc/machine-id
}

# setup GROUP...: installs what is missing of these groups.
setup() {
    require_debian
    local missing
    missing=$(missing_of "$@")
    if [ -n "$missing" ]; then
        echo "Installing $(echo "$missing" | wc -l) packages (some minutes on a fresh system):"
        # shellcheck disable=SC2086  # one name a line
        packages_of "$@" | grep -F -f <(printf '%s|\n' $missing) | while IFS='|' read -r package reason; do
            printf '    %-22s %s\n' "$package" "$reason"
        done
        install_missing "$missing"
    fi
    ensure_machine_id
}

# build PRESET FOLDER: configures when needed and builds; quiet when there is nothing to do.
build() {
    local preset="$1" folder="$FADEWELL_ROOT/$2"
    if [ ! -f "$folder/build.ninja" ]; then
        echo "Building into $2/ (some minutes the first time) ..."
        (cd "$FADEWELL_ROOT" && cmake --preset "$preset" --log-level=WARNING)
    fi
    # A terminal sees one line that counts up.
    if [ -t 1 ]; then ninja -C "$folder"; else ninja -C "$folder" --quiet; fi
}

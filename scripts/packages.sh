# shellcheck shell=bash
# Every Debian package that Fadewell is built, run and tested with, and why. Nothing else names packages.
# group | package | reason      (cmake/Dependencies.cmake finds the libraries among them)
fadewell_packages() {
    cat <<'LIST'
build|g++|the compiler (GCC 12 or newer)
build|cmake|configures the build from CMakePresets.json
build|ninja-build|runs the build
build|pkg-config|finds PipeWire, systemd and the UUID library
build|qt6-base-dev|QtCore and QtDBus: the program's event loop and its bus interface
build|qt6-declarative-dev|Qt Quick: the panel
build|qt6-declarative-dev-tools|compiles and checks QML
build|qt6-svg-dev|renders the panel's symbols
build|qt6-tools-dev|finds the tools for translations
build|qt6-l10n-tools|lupdate and lrelease, for the translations
build|libxcb1-dev|X11: compositor, tray, keyboard, the window in front
build|libpipewire-0.3-dev|the sound system
build|libspa-0.2-dev|PipeWire's data formats
build|libfmt-dev|text formatting
build|libspdlog-dev|log sinks: standard error and the journal
build|nlohmann-json3-dev|stored settings and --json output
build|libicu-dev|locale-aware sorting, percentages and lists
build|uuid-dev|identifiers of taps and aggregates
build|libsystemd-dev|the journal and user scopes
build|libglib2.0-dev|GIO: the shortcuts that GNOME, Cinnamon and MATE have bound themselves
build|libxcb-xkb-dev|keyboard layouts of the X server
build|libxkbcommon-dev|what keys type
build|libxkbcommon-x11-dev|what keys type on the X server
build|libwayland-dev|Wayland: the window in front, and the mixer in a corner of the screen
build|wayland-protocols|what these two speak to compositors
build|qt6-base-private-dev|gives the mixer's window that corner: Qt 6.4 tells its surface nowhere else
build|libcli11-dev|command lines of fadewell and fadewellctl
build|libgtest-dev|the tests' framework
build|libgmock-dev|the tests' matchers
build|libbenchmark-dev|the benchmarks' framework
build|libxcb-xtest0-dev|presses keys in the keyboard tests
build|libpulse-dev|a client of the tests that speaks the Pulse protocol
build|libatspi2.0-dev|the tests operate the panel as assistive technology does
run|pipewire|the sound server of the demo and test sessions
run|pipewire-bin|pw-cat, pw-link and pw-metadata, to play and to look into a session
run|wireplumber|the session manager of the demo and test sessions
run|pipewire-pulse|programs that speak the Pulse protocol
run|pulseaudio-utils|a Pulse player, and pactl to see whether the server answers
run|dbus|the session bus that fadewellctl speaks over
run|qml6-module-qtquick|Qt Quick at run time; its modules don't depend on each other
run|qml6-module-qtquick-layouts|rows and columns of the panel
run|qml6-module-qtquick-templates|behaviour of sliders, switches and menus
run|qml6-module-qtquick-window|its windows
run|qml6-module-qtqml-workerscript|needed by Qt Quick itself
run|qt6-wayland|windows on Wayland
test|xvfb|a screen for the tests of keyboard, tray and windows
test|x11-xkb-utils|changes its keyboard layout
test|x11-xserver-utils|xmodmap, to move its modifiers
test|trayer|a tray, for the walk through the whole program
test|at-spi2-core|the accessibility bus of those tests
test|mpv|an unmodified player in the integration tests
test|ffmpeg|ffplay, another one, through the Pulse protocol
test|chromium|a browser that takes the microphone as it does in a call
bench|pavucontrol|the desktop's usual mixer, to compare with
ci|clang-19|the second compiler, with thread-safety analysis
ci|libclang-rt-19-dev|its address and thread sanitizers, and its fuzzer
ci|clang-format-14|the formatting check
ci|qml6-module-qtqml|what qmllint knows about QML itself
ci|lintian|checks the Debian package
ci|desktop-file-utils|checks the desktop entry
ci|appstream|checks the metadata for software centres
ci|flatpak-builder|reads the Flatpak manifest
window|qml6-module-qtquick|Qt Quick at run time; its modules don't depend on each other
window|qml6-module-qtquick-layouts|rows and columns of the windows
window|qml6-module-qtquick-templates|behaviour of sliders, switches and menus
window|qml6-module-qtquick-window|its windows
window|qml6-module-qtqml-workerscript|needed by Qt Quick itself
window|qt6-wayland|windows on Wayland
pictures|xvfb|a screen to take pictures of, where there is none
pictures|scrot|takes them
docs|xdotool|presses the keys and buttons that lead to what the pictures show
docs|trayer|a tray for the icon
docs|fonts-inter|a font as desktops have one
LIST
}

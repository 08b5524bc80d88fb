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
build|libpipewire-0.3-dev|the sound system
build|libspa-0.2-dev|PipeWire's data formats
build|libfmt-dev|text formatting
build|libspdlog-dev|log sinks: standard error and the journal
build|nlohmann-json3-dev|stored settings and --json output
build|libicu-dev|locale-aware sorting, percentages and lists
build|uuid-dev|identifiers of taps and aggregates
build|libsystemd-dev|the journal and user scopes
build|libcli11-dev|command lines of fadewell and fadewellctl
build|libgtest-dev|the tests' framework
build|libgmock-dev|the tests' matchers
build|libbenchmark-dev|the benchmarks' framework
run|pipewire|the sound server of the demo and test sessions
run|pipewire-bin|pw-cat, pw-link and pw-metadata, to play and to look into a session
run|wireplumber|the session manager of the demo and test sessions
run|pipewire-pulse|programs that speak the Pulse protocol
run|pulseaudio-utils|a Pulse player, and pactl to see whether the server answers
run|dbus|the session bus that fadewellctl speaks over
test|mpv|an unmodified player in the integration tests
test|ffmpeg|ffplay, another one, through the Pulse protocol
ci|clang-19|the second compiler, with thread-safety analysis
ci|libclang-rt-19-dev|its address and thread sanitizers
ci|clang-format-14|the formatting check
LIST
}

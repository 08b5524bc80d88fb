# Every library Fadewell links, and why. The matching Debian packages stand in scripts/packages.sh.
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
find_package(fmt REQUIRED)             # text formatting: GCC 12 has no std::format
find_package(spdlog REQUIRED)          # log sinks: standard error and the systemd journal
find_package(nlohmann_json REQUIRED)   # the stored settings and every --json output
find_package(ICU REQUIRED COMPONENTS i18n uc) # locale-aware sorting, percentages, lists
pkg_check_modules(UUID REQUIRED IMPORTED_TARGET uuid)                   # random UUIDs of taps and aggregates
pkg_check_modules(PIPEWIRE REQUIRED IMPORTED_TARGET libpipewire-0.3)    # the sound system
pkg_check_modules(SYSTEMD REQUIRED IMPORTED_TARGET libsystemd)          # the journal and user scopes
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb xcb-xkb)             # shortcuts and the window in front on X11
pkg_check_modules(XKBCOMMON REQUIRED IMPORTED_TARGET xkbcommon xkbcommon-x11) # what keys type
if(FADEWELL_WAYLAND)
    pkg_check_modules(WAYLAND REQUIRED IMPORTED_TARGET wayland-client) # the window in front, the mixer's place
    pkg_check_modules(WAYLAND_PROTOCOLS REQUIRED wayland-protocols)    # what these speak to compositors
endif()
if(FADEWELL_QT)
    find_package(Qt6 REQUIRED COMPONENTS Core DBus) # event loop of the program, session bus
    find_package(Qt6 REQUIRED COMPONENTS Gui LinguistTools Quick Svg) # the panel, its symbols and languages
    find_package(CLI11 REQUIRED)                    # command lines of fadewell and fadewellctl
    find_package(Qt6 REQUIRED COMPONENTS Gui Svg Widgets) # the tray icon and its menu
    pkg_check_modules(GIO REQUIRED IMPORTED_TARGET gio-2.0) # the shortcuts of GNOME and its relatives
    pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb) # whether an X server answers
endif()
if(FADEWELL_TESTS)
    find_package(GTest REQUIRED)       # tests
    find_package(benchmark REQUIRED)   # benchmarks
    pkg_check_modules(XTEST REQUIRED IMPORTED_TARGET xcb-xtest) # presses keys
    pkg_check_modules(PULSE REQUIRED IMPORTED_TARGET libpulse) # a test client of that protocol
endif()

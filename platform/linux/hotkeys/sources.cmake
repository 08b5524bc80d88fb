list(APPEND FADEWELL_LINUX_SOURCES
    hotkeys/KeyCodeMap.cpp hotkeys/LinuxHotKeyService.cpp hotkeys/TypedCharacters.cpp
    hotkeys/X11HotKeyEvents.cpp hotkeys/X11HotKeyService.cpp hotkeys/XKeyboard.cpp)
list(APPEND FADEWELL_LINUX_LINKS fadewell_shortcuts PkgConfig::XCB PkgConfig::XKBCOMMON)

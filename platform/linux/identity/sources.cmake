# The table of known applications is compiled in; the file itself is what people edit.
set(known_apps ${CMAKE_CURRENT_SOURCE_DIR}/identity/known-apps.json)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${known_apps})
file(READ ${known_apps} FADEWELL_KNOWN_APPS)
configure_file(identity/KnownAppsData.cpp.in ${CMAKE_CURRENT_BINARY_DIR}/KnownAppsData.cpp @ONLY)

set(FADEWELL_LINUX_IDENTITY_SOURCES
    identity/AppIdentities.cpp identity/ClientName.cpp identity/DesktopEntry.cpp identity/DesktopIndex.cpp
    identity/IdentityResolver.cpp identity/KnownApps.cpp identity/LocaleNames.cpp identity/ProcessTable.cpp
    identity/ProgramName.cpp identity/UnitName.cpp ${CMAKE_CURRENT_BINARY_DIR}/KnownAppsData.cpp
    Base64.cpp FileUserDefaults.cpp LinuxLogSink.cpp LogText.cpp ProcessInstance.cpp SettingsFile.cpp
    SettingsFormat.cpp Utf8.cpp XdgPaths.cpp XdgWorkspace.cpp)
list(APPEND FADEWELL_LINUX_SOURCES ${FADEWELL_LINUX_IDENTITY_SOURCES})
list(APPEND FADEWELL_LINUX_LINKS PkgConfig::SYSTEMD)

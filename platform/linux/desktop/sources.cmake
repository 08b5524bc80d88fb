list(APPEND FADEWELL_LINUX_SOURCES
    desktop/Session.cpp desktop/SwayFrontWindow.cpp desktop/X11FrontWindow.cpp)
if(FADEWELL_WAYLAND)
    list(APPEND FADEWELL_LINUX_SOURCES desktop/WaylandFrontWindow.cpp desktop/WaylandToplevels.cpp)
    list(APPEND FADEWELL_LINUX_LINKS fadewell_wayland)
endif()

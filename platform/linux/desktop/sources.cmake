list(APPEND FADEWELL_LINUX_SOURCES
    desktop/Session.cpp desktop/SwayFrontWindow.cpp desktop/X11FrontWindow.cpp)

list(APPEND FADEWELL_LINUX_SOURCES
    pipewire/Connection.cpp)

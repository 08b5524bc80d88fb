list(APPEND FADEWELL_LINUX_SOURCES
    supervision/HangJudge.cpp
    supervision/Heartbeat.cpp
    supervision/Supervisor.cpp)

list(APPEND FADEWELL_LINUX_SOURCES login/AutostartItem.cpp)

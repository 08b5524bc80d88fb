list(APPEND FADEWELL_LINUX_SOURCES doctor/Doctor.cpp doctor/Findings.cpp doctor/LinuxInspection.cpp
    doctor/SystemVersions.cpp)

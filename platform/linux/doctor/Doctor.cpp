#include "platform/linux/doctor/Doctor.h"

#include "platform/linux/doctor/LinuxInspection.h"

namespace fadewell {

std::vector<Finding> diagnose()
{
    return LinuxInspection::connect()->findings();
}

} // namespace fadewell

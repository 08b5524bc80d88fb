#include "ui/DropDown.h"

namespace fadewell {

// This build knows no desktop that would do it.
std::unique_ptr<DropDown> DropDown::create()
{
    return nullptr;
}

} // namespace fadewell

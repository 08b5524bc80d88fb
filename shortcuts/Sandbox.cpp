#include "shortcuts/Sandbox.h"

#include <cstdlib>

namespace fadewell::shortcuts {

bool isSandboxed()
{
    // NOLINTNEXTLINE(concurrency-mt-unsafe): nobody sets it
    static const bool result = std::getenv("APP_SANDBOX_CONTAINER_ID") != nullptr;
    return result;
}

} // namespace fadewell::shortcuts

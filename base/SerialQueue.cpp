#include "base/SerialQueue.h"

#include <cstdio>
#include <cstdlib>

namespace fadewell {

void SerialQueue::assertCurrent() const
{
    if (!isCurrent()) {
        std::fputs("fadewell: a task ran on the wrong queue\n", stderr);
        std::abort();
    }
}

} // namespace fadewell

#pragma once

#include "tests/integration/support/SoundTest.h"
#include "tests/ui/support/Accessible.h"

#include <memory>

namespace fadewell::integration {

/// Tests that share a private session with a screen and an accessibility bus.
class ScreenTest : public SoundTest {
public:
    static void SetUpTestSuite();
    static void TearDownTestSuite();

private:
    static std::unique_ptr<ChildProcess> screen_;
    static std::unique_ptr<ChildProcess> accessibilityBus_;
};

} // namespace fadewell::integration

#include "tests/ui/support/ScreenTest.h"

#include "tests/integration/support/Await.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace fadewell::integration {

std::unique_ptr<ChildProcess> ScreenTest::screen_;
std::unique_ptr<ChildProcess> ScreenTest::accessibilityBus_;

void ScreenTest::SetUpTestSuite()
{
    SoundTest::SetUpTestSuite();
    // It chooses a free number itself, and writes it when it is ready.
    screen_ = std::make_unique<ChildProcess>(std::vector<std::string>{
        "Xvfb", "-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp", "-noreset"});
    if (!await([] { return screen_->output().ends_with('\n'); })) {
        throw std::runtime_error("No screen: " + screen_->errors());
    }
    const auto number = screen_->output();
    setenv("DISPLAY", (":" + number.substr(0, number.find('\n'))).c_str(), 1);
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    setenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1", 1);
    setenv("NO_AT_BRIDGE", "1", 1); // Other toolkits' bridges would register a second program.
    setenv("LC_ALL", "C.UTF-8", 1); // The tests read English texts.
    unsetenv("LANGUAGE");
    unsetenv("WAYLAND_DISPLAY");
    accessibilityBus_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{"/usr/libexec/at-spi-bus-launcher", "--launch-immediately"});
}

void ScreenTest::TearDownTestSuite()
{
    accessibilityBus_.reset();
    screen_.reset();
    SoundTest::TearDownTestSuite();
}

} // namespace fadewell::integration

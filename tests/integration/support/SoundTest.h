#pragma once

#include "tests/integration/support/Player.h"
#include "tests/integration/support/Recorder.h"
#include "tests/integration/support/Session.h"

#include <gtest/gtest.h>
#include <memory>

namespace fadewell::integration {

/// Tests that share one private session, recorded on both of its outputs.
class SoundTest : public testing::Test {
public:
    static void SetUpTestSuite();
    static void TearDownTestSuite();

protected:
    void SetUp() override;

    [[nodiscard]] static std::filesystem::path tone();
    [[nodiscard]] static std::filesystem::path counter();

    std::unique_ptr<Recorder> speakers_;
    std::unique_ptr<Recorder> headphones_;

private:
    static std::unique_ptr<Session> session_;
};

/// How much of a recording of the counter is whole.
struct CounterCheck {
    std::size_t frames = 0; ///< frames of the counter that were heard
    std::size_t wrong = 0;  ///< frames out of order, or not as they were played in any bit
};
[[nodiscard]] CounterCheck checkCounter(const Sound& sound);

} // namespace fadewell::integration

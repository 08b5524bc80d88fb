#pragma once

#include "tests/integration/support/CountedSound.h"
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
    /// A minute, written to counter().
    static const CountedSound counted;
    [[nodiscard]] static std::filesystem::path counter();

    std::unique_ptr<Recorder> speakers_;
    std::unique_ptr<Recorder> headphones_;

private:
    static std::unique_ptr<Session> session_;
};

} // namespace fadewell::integration

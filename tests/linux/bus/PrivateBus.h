#pragma once

#include "tests/support/BusDaemon.h"

#include <QDBusConnection>

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace fadewell {

/// A session bus that only this test is on.
class PrivateBus : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// A connection of its own; closed at the end.
    [[nodiscard]] QDBusConnection connect(const char* name);

    /// Runs the event loop until it holds; false when it doesn't in time.
    [[nodiscard]] static bool waitUntil(const std::function<bool()>& holds);

private:
    BusDaemon daemon_;
    std::vector<std::string> connections_;
};

} // namespace fadewell

#pragma once

#include "app/MixerModel.h"
#include "base/MemoryUserDefaults.h"
#include "base/SystemClock.h"
#include "control/InstanceClaim.h"
#include "control/MixerService.h"
#include "control/QtMainQueue.h"
#include "control/values/BusNames.h"
#include "tests/support/BusDaemon.h"
#include "tests/support/SimulatedWorkspace.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <gtest/gtest.h>
#include <memory>

namespace fadewell {

/// Plays what a test says can't be tapped.
class FakeTappability final : public Tappability {
public:
    std::vector<UntappableProcess> processes;
    std::vector<UntappableProcess> untappable() override { return processes; }
};

/// A private bus, on it the mixer's service over a model that shows prepared values and has no
/// engine behind it.
class BusFixture : public testing::Test {
protected:
    static constexpr const char* firefox = "org.mozilla.firefox";

    static AppRowState row(const char* id, const char* name, bool isPlaying = false);

    void SetUp() override;
    void TearDown() override;

    /// Calls from another connection while this thread's event loop serves.
    QDBusMessage call(const QString& member, const QVariantList& arguments = {});
    QDBusMessage callInterface(const QString& interface,
                               const QString& member,
                               const QVariantList& arguments = {});

    /// Runs the event loop until it holds; the test's own limit ends it otherwise.
    static void waitUntil(const std::function<bool()>& holds);

    QDBusConnection connect(const char* name) const;

    std::shared_ptr<MemoryUserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    std::shared_ptr<SimulatedWorkspace> workspace = std::make_shared<SimulatedWorkspace>();
    std::shared_ptr<FakeTappability> tappability = std::make_shared<FakeTappability>();
    std::shared_ptr<QtMainQueue> queue =
        std::make_shared<QtMainQueue>(std::make_shared<SystemClock>());
    std::shared_ptr<MixerModel> model;
    std::unique_ptr<MixerService> service;
    BusDaemon daemon;
    const QString address = daemon.address();
    bool isPermitted = true;
    int quits = 0;
    int reopens = 0;
};

} // namespace fadewell

#pragma once

#include "app/Workspace.h"
#include "base/Subscription.h"
#include "platform/linux/ProcessIdentity.h"
#include "platform/linux/identity/IdentityResolver.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell {

/// The one answer to who is behind a process: what takes sound, what groups it and what names it
/// all ask here, so that they can't disagree. A process is looked into once, when its first client
/// appears, and remembered until it is forgotten. [any thread]
class AppIdentities final : public ProcessIdentity {
public:
    struct Config {
        std::filesystem::path processRoot = "/proc";
        DesktopIndex::Config desktop = DesktopIndex::Config::current();
    };

    /// Reads the installed applications, which may take some tens of milliseconds.
    AppIdentities()
        : AppIdentities(Config{})
    {}
    explicit AppIdentities(Config config);

    /// For a process that belongs to another's application, that application's identifier.
    [[nodiscard]] std::optional<std::string> bundleID(std::int32_t pid,
                                                      const ClientHints& hints) override;
    [[nodiscard]] std::optional<std::string> peekBundleID(std::int32_t pid,
                                                          const ClientHints& hints) override;
    void forget(std::int32_t pid) override;
    [[nodiscard]] bool isRunning(std::int32_t pid) const override;

    /// The immediate parent; absent when there is none or it can't be told.
    [[nodiscard]] std::optional<std::int32_t> parent(std::int32_t pid) const;

    /// The process of the application that this one belongs to, possibly itself; 0 when unknown.
    [[nodiscard]] std::int32_t responsible(std::int32_t pid);

    /// Those with an audio client, each once, by the order in which they appeared.
    [[nodiscard]] std::vector<RunningApplication> runningApplications() const;

    /// The application of a window: of the process that it belongs to or, where that isn't known,
    /// by what the window calls its application. Absent when neither leads anywhere.
    [[nodiscard]] std::optional<RunningApplication> application(std::optional<std::int32_t> pid,
                                                                std::string_view windowAppID);

    /// Calls `appeared` on the thread that found a new application, until the subscription dies.
    [[nodiscard]] Subscription onAppeared(std::function<void()> appeared);

    [[nodiscard]] std::optional<AppLocation> location(std::string_view bundleID);

    /// What is shown for a desktop entry, or for whatever else lies at the path.
    [[nodiscard]] AppLocation describe(const std::filesystem::path& path) const;

private:
    struct Application {
        ResolvedIdentity identity;
        std::uint64_t order = 0;
        int clients = 0; ///< processes that belong to it
    };
    using Observers = std::map<int, std::function<void()>>;
    struct ObserverList {
        std::mutex mutex;
        Observers observers;
        int nextID = 0;
    };

    [[nodiscard]] bool remember(std::int32_t pid, ResolvedIdentity identity);
    void drop(std::int32_t pid);
    void tellObservers();

    const ProcessTable processes_;
    const std::shared_ptr<ObserverList> observers_ = std::make_shared<ObserverList>();

    mutable std::mutex mutex_; // All below.
    DesktopIndex index_;
    const IdentityResolver resolver_;
    std::map<std::int32_t, ResolvedIdentity> identities_; ///< of every process with a client
    std::map<std::int32_t, Application> applications_;    ///< by their own process
    std::uint64_t nextOrder_ = 0;
};

} // namespace fadewell

#include "platform/linux/identity/AppIdentities.h"

#include <algorithm>
#include <utility>

namespace fadewell {
namespace {

AppIcon iconOf(const DesktopEntry& entry)
{
    if (entry.icon.empty()) {
        return AppIcon::generic();
    }
    return entry.icon.starts_with('/') ? AppIcon{{}, entry.icon} : AppIcon{entry.icon, {}};
}

AppLocation locationOf(const DesktopEntry& entry)
{
    return {entry.path.string(), entry.name.empty() ? entry.id : entry.name, iconOf(entry)};
}

RunningApplication running(const ResolvedIdentity& identity)
{
    RunningApplication application;
    application.pid = identity.owner;
    application.bundleID = identity.bundleID;
    if (!identity.name.empty()) {
        application.name = identity.name;
    }
    if (identity.entry) {
        application.icon = iconOf(*identity.entry);
        application.location = identity.entry->path.string();
    }
    const bool isListedWithIcon = identity.entry && !identity.entry->icon.empty();
    if (!isListedWithIcon && !identity.iconName.empty()) {
        application.icon = AppIcon{identity.iconName, {}};
    }
    return application;
}

} // namespace

AppIdentities::AppIdentities(Config config)
    : processes_(std::move(config.processRoot))
    , index_(std::move(config.desktop))
    , resolver_(processes_, index_)
{}

std::optional<std::string> AppIdentities::bundleID(std::int32_t pid, const ClientHints& hints)
{
    bool hasAppeared = false;
    std::optional<std::string> bundleID;
    {
        const std::lock_guard lock(mutex_);
        auto found = identities_.find(pid);
        const bool isKnown = found != identities_.end();
        // A client may tell its name only with its first stream.
        if (!isKnown || !found->second.bundleID) {
            index_.refresh();
            auto identity = resolver_.resolve(pid, hints);
            if (!isKnown || identity.bundleID) {
                hasAppeared = remember(pid, std::move(identity));
                found = identities_.find(pid);
            }
        }
        bundleID = found->second.bundleID;
    }
    if (hasAppeared) {
        tellObservers();
    }
    return bundleID;
}

std::optional<std::string> AppIdentities::peekBundleID(std::int32_t pid, const ClientHints& hints)
{
    const std::lock_guard lock(mutex_);
    if (const auto found = identities_.find(pid);
        found != identities_.end() && found->second.bundleID) {
        return found->second.bundleID;
    }
    index_.refresh();
    return resolver_.resolve(pid, hints).bundleID;
}

bool AppIdentities::remember(std::int32_t pid, ResolvedIdentity identity)
{
    drop(pid);
    const auto owner = identity.owner;
    identities_.insert_or_assign(pid, identity);
    const auto [place, isNew] = applications_.try_emplace(owner);
    auto& application = place->second;
    ++application.clients;
    if (isNew) {
        application.order = nextOrder_++;
    }
    // What the application's own process says of itself counts more than what its helpers do.
    if (isNew || pid == owner) {
        application.identity = std::move(identity);
    }
    return isNew;
}

void AppIdentities::drop(std::int32_t pid)
{
    const auto found = identities_.find(pid);
    if (found == identities_.end()) {
        return;
    }
    const auto application = applications_.find(found->second.owner);
    if (application != applications_.end() && --application->second.clients == 0) {
        applications_.erase(application);
    }
    identities_.erase(found);
}

void AppIdentities::forget(std::int32_t pid)
{
    const std::lock_guard lock(mutex_);
    drop(pid);
}

bool AppIdentities::isRunning(std::int32_t pid) const
{
    return pid >= IdentityResolver::firstMadeUpPID || processes_.parent(pid).has_value();
}

std::optional<std::int32_t> AppIdentities::parent(std::int32_t pid) const
{
    return pid >= IdentityResolver::firstMadeUpPID ? std::nullopt : processes_.parent(pid);
}

std::int32_t AppIdentities::responsible(std::int32_t pid)
{
    const std::lock_guard lock(mutex_);
    if (const auto found = identities_.find(pid); found != identities_.end()) {
        return found->second.owner;
    }
    return 0;
}

std::vector<RunningApplication> AppIdentities::runningApplications() const
{
    const std::lock_guard lock(mutex_);
    std::vector<const Application*> ordered;
    for (const auto& [pid, application] : applications_) {
        ordered.push_back(&application);
    }
    std::sort(ordered.begin(), ordered.end(), [](const auto* left, const auto* right) {
        return left->order < right->order;
    });
    std::vector<RunningApplication> list;
    for (const auto* application : ordered) {
        list.push_back(running(application->identity));
    }
    return list;
}

std::optional<RunningApplication> AppIdentities::application(std::optional<std::int32_t> pid,
                                                             std::string_view windowAppID)
{
    const std::lock_guard lock(mutex_);
    if (pid) {
        if (const auto known = identities_.find(*pid); known != identities_.end()) {
            return running(known->second);
        }
    }
    index_.refresh();
    ClientHints hints;
    hints.applicationID = windowAppID;
    const auto identity = resolver_.resolve(pid.value_or(IdentityResolver::firstMadeUpPID), hints);
    // Its own process may have no sound while a helper plays: what plays names the app.
    const auto owner = applications_.find(identity.owner);
    const auto found = running(owner == applications_.end() ? identity : owner->second.identity);
    return found.bundleID ? std::optional(found) : std::nullopt;
}

Subscription AppIdentities::onAppeared(std::function<void()> appeared)
{
    const std::lock_guard lock(observers_->mutex);
    const int id = observers_->nextID++;
    observers_->observers.emplace(id, std::move(appeared));
    return Subscription([weak = std::weak_ptr(observers_), id] {
        if (const auto list = weak.lock()) {
            const std::lock_guard inner(list->mutex);
            list->observers.erase(id);
        }
    });
}

void AppIdentities::tellObservers()
{
    Observers observers;
    {
        const std::lock_guard lock(observers_->mutex);
        observers = observers_->observers;
    }
    for (const auto& [id, appeared] : observers) {
        appeared();
    }
}

std::optional<AppLocation> AppIdentities::location(std::string_view bundleID)
{
    const std::lock_guard lock(mutex_);
    index_.refresh();
    const auto entry = resolver_.installed(bundleID);
    return entry ? std::optional(locationOf(*entry)) : std::nullopt;
}

AppLocation AppIdentities::describe(const std::filesystem::path& path) const
{
    const std::lock_guard lock(mutex_);
    const auto entry = path.extension() == ".desktop" ? index_.read(path) : nullptr;
    return entry ? locationOf(*entry)
                 : AppLocation{path.string(), path.stem().string(), AppIcon::generic()};
}

} // namespace fadewell

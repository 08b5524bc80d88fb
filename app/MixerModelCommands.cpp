#include "app/MixerModel.h"
#include "base/LocalizedText.h"

#include <algorithm>

namespace fadewell {
namespace {

constexpr int highPriority = 90;

} // namespace

void MixerModel::writeThrough(const AppAudioSettings& changed, const std::string& appID)
{
    settings_.insert_or_assign(appID, changed);
    if (services_.store) {
        services_.store->set(changed, appID);
    }
    showInRow(changed, appID);
    refreshRememberedApps();
    updateStartGate();
    pushTapRequests();
}

void MixerModel::showInRow(const AppAudioSettings& changed, const std::string& appID)
{
    auto rows = apps.get();
    const auto row = std::find_if(
        rows.begin(), rows.end(), [&appID](const auto& each) { return each.id == appID; });
    if (row == rows.end()) {
        return;
    }
    row->settings = changed;
    const auto shown = *row;
    apps.set(std::move(rows)); // From here on `appID` may dangle: a caller may pass a row's own.
    lastKnown_.insert_or_assign(shown.id, shown);
}

void MixerModel::setVolume(double volume, const std::string& appID)
{
    services_.mainQueue->assertCurrent();
    auto changed = settings(appID);
    changed.setVolume(volume);
    changed.isMuted = false;
    writeThrough(changed, appID);
}

void MixerModel::setMuted(bool muted, const std::string& appID)
{
    services_.mainQueue->assertCurrent();
    auto changed = settings(appID);
    changed.isMuted = muted;
    writeThrough(changed, appID);
}

void MixerModel::setOutput(std::optional<std::string> uid,
                           std::optional<std::string> name,
                           const std::string& appID)
{
    services_.mainQueue->assertCurrent();
    auto changed = settings(appID);
    changed.outputDeviceUID = std::move(uid);
    changed.outputDeviceName = std::move(name);
    writeThrough(changed, appID);
}

void MixerModel::forget(const std::string& appID)
{
    services_.mainQueue->assertCurrent();
    const auto id = appID; // The caller's may live in what is removed here.
    settings_.erase(id);
    if (services_.store) {
        services_.store->remove(id);
    }
    showInRow(AppAudioSettings::default_(), id);
    refreshRememberedApps();
    updateStartGate();
    pushTapRequests();
}

void MixerModel::forgetAll()
{
    services_.mainQueue->assertCurrent();
    const auto remembered = settings_;
    for (const auto& [id, saved] : remembered) {
        forget(id);
    }
    if (services_.store) {
        services_.store->removeAll();
    }
    refreshRememberedApps();
}

std::optional<MixerModel::NamedApp> MixerModel::frontmostApp()
{
    if (const auto front = services_.workspace->frontmost()) {
        if (!front->bundleID || front->pid == services_.workspace->ownPID()) {
            return std::nullopt;
        }
        return NamedApp{*front->bundleID, front->name.value_or(*front->bundleID)};
    }
    const auto latest = recentlyStarted_.latest();
    const auto app = latest ? current_.find(*latest) : current_.end();
    if (services_.workspace->tellsFrontmost() || app == current_.end()) {
        return std::nullopt;
    }
    return NamedApp{app->first, directory_.identity(app->second).name};
}

std::optional<std::string> MixerModel::stepFrontmostApp(double delta)
{
    services_.mainQueue->assertCurrent();
    const auto app = frontmostApp();
    if (!app) {
        return std::nullopt;
    }
    const double level = std::clamp(settings(app->id).effectiveVolume() + delta, 0.0, 1.0);
    setVolume(level, app->id);
    services_.workspace->announce(app->name + " " + localizedPercent(level), highPriority);
    return app->id;
}

void MixerModel::toggleMicrophone()
{
    auto expected = microphone.get(); // Shown at once; the device's own state follows.
    expected.isMuted = !expected.isMuted;
    const bool muted = expected.isMuted;
    microphone.set(std::move(expected));
    if (services_.microphoneController) {
        services_.microphoneController->setMuted(muted);
    }
}

void MixerModel::setMicrophoneVolume(double volume)
{
    auto expected = microphone.get();
    expected.volume = volume;
    expected.isMuted = false;
    microphone.set(std::move(expected));
    if (services_.microphoneController) {
        services_.microphoneController->setVolume(volume);
    }
}

} // namespace fadewell

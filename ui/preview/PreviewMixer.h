#pragma once

#include "app/MixerModel.h"
#include "audio/Tappability.h"
#include "base/SystemClock.h"
#include "platform/simulated/SimulatedHardware.h"
#include "platform/simulated/SimulatedProcessLookup.h"
#include "ui/PanelWindow.h"
#include "ui/preview/PreviewWorkspace.h"

#include <memory>
#include <string>
#include <vector>

namespace fadewell {

/// A mixer in a situation worth looking at, over the simulated sound system. [main thread]
class PreviewMixer final {
public:
    enum class Scene {
        ordinary,
        call,
        muted,
        permission,
        empty,
        many,
        devices,
    };

    explicit PreviewMixer(Scene scene);
    ~PreviewMixer();
    PreviewMixer(const PreviewMixer&) = delete;
    PreviewMixer& operator=(const PreviewMixer&) = delete;

    [[nodiscard]] PanelWindow::Parts parts() const;

private:
    struct Untappable;

    void addDevices(Scene scene);
    void addApps(Scene scene);
    void addManyApps();
    AudioObjectID addApp(const std::string& id,
                         const std::string& name,
                         const std::string& icon,
                         bool usesMicrophone = false);
    void createModel();
    void arrange(Scene scene);

    std::shared_ptr<SystemClock> clock_ = std::make_shared<SystemClock>();
    std::shared_ptr<SerialQueue> mainQueue_;
    std::shared_ptr<SimulatedHardware> hardware_;
    std::shared_ptr<SimulatedProcessLookup> lookup_ = std::make_shared<SimulatedProcessLookup>();
    std::shared_ptr<PreviewWorkspace> workspace_ = std::make_shared<PreviewWorkspace>();
    std::shared_ptr<Untappable> untappable_;
    std::shared_ptr<MixerModel> model_;
    std::int32_t lastPID_ = 100;
    Timer cycles_;
};

} // namespace fadewell

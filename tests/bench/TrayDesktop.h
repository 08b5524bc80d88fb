#pragma once

#include "tests/bench/PaintedScreen.h"
#include "tests/integration/support/ChildProcess.h"
#include "tests/ui/tray/FakeWatcher.h"

#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace fadewell::integration {

/// What something took, in milliseconds.
struct Cost {
    double wall = 0;
    double processor = 0; ///< of the processes that did it
};

/// A desktop with a screen and a tray, on the bus of the environment, which measures programs with
/// windows. Needs a QCoreApplication; on its thread. What doesn't happen in time throws
/// std::runtime_error.
class TrayDesktop {
public:
    TrayDesktop();
    ~TrayDesktop();
    TrayDesktop(const TrayDesktop&) = delete;
    TrayDesktop& operator=(const TrayDesktop&) = delete;

    /// Until the icon is in the tray.
    [[nodiscard]] Cost startFadewell();
    /// Clicks the icon, until the panel is drawn.
    [[nodiscard]] Cost openPanel();
    void closePanel();
    void endFadewell();
    /// The working process, then its supervisor.
    [[nodiscard]] std::vector<pid_t> fadewell() const;

    /// Another program, until its window is drawn.
    [[nodiscard]] Cost startOther(const std::string& program);
    void endOther();
    [[nodiscard]] pid_t other() const { return other_->pid(); }

    [[nodiscard]] XServer& server() { return screen_.server(); }

private:
    void click();
    void await(const std::function<bool()>& isTrue, const std::string& otherwise);

    PaintedScreen screen_;
    FakeWatcher tray_;
    std::optional<ChildProcess> fadewell_;
    std::optional<ChildProcess> other_;
};

} // namespace fadewell::integration

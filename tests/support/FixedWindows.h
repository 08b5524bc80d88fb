#pragma once

#include "app/AppWindows.h"

#include <algorithm>
#include <vector>

namespace fadewell {

/// Windows that only note that they were opened.
class FixedWindows final : public AppWindows {
public:
    std::vector<AppWindow> offered{AppWindow::panel};
    std::vector<AppWindow> shown;

    [[nodiscard]] bool offers(AppWindow window) const override
    {
        return std::find(offered.begin(), offered.end(), window) != offered.end();
    }
    void show(AppWindow window) override { shown.push_back(window); }
};

} // namespace fadewell

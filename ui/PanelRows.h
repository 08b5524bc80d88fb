#pragma once

#include "app/AppRowState.h"
#include "app/UntappableApp.h"
#include "core/OutputDevice.h"
#include "ui/AppRowView.h"

#include <QCoreApplication>

#include <optional>
#include <span>
#include <string>

namespace fadewell {

/// Puts the mixer's rows into the form in which the panel shows them.
class PanelRows final {
    Q_DECLARE_TR_FUNCTIONS(PanelRows)

public:
    PanelRows() = delete;

    [[nodiscard]] static AppRowView row(const AppRowState& app,
                                        std::span<const OutputDevice> devices,
                                        const std::optional<std::string>& defaultOutputUID);

    /// A row that can only be looked at.
    [[nodiscard]] static AppRowView row(const UntappableApp& app,
                                        std::span<const OutputDevice> devices,
                                        const std::optional<std::string>& defaultOutputUID);

private:
    [[nodiscard]] static QString badge(std::optional<CallStatus> status);
    [[nodiscard]] static QString obstacle(UntappableReason reason);
    static void showOutput(AppRowView& row, const OutputDevice* device);
};

} // namespace fadewell

#pragma once

#include <QString>

namespace fadewell {

/// One row of the panel in the form in which it is shown.
struct AppRowView {
    QString id{};
    QString name{};
    QString icon{};    ///< address of the picture
    double volume = 1; ///< 0 to 1
    QString percent{}; ///< the volume as text
    bool isMuted = false;
    int waves = 3;   ///< how many waves of the speaker are lit, 0 to 3
    QString badge{}; ///< what call mode does to it; empty: nothing
    QString outputSymbol{};
    QString outputName{};  ///< empty: no device
    bool isRouted = false; ///< sent to a chosen device
    QString obstacle{};    ///< why it can't be controlled; empty: it can

    bool operator==(const AppRowView&) const = default;
};

} // namespace fadewell

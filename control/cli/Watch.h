#pragma once

#include "control/cli/MixerClient.h"

#include <QObject>

namespace fadewell::cli {

/// Prints the state, and then what changes, until the program ends.
class Watch final : public QObject {
    Q_OBJECT

public:
    Watch(const MixerClient& client, bool isJson);

    /// Throws a Failure when the program ended.
    void run();

private Q_SLOTS:
    void refresh();

private:
    void printFirst() const;
    void printNext(const MixerState& next) const;

    const MixerClient& client_;
    bool isJson_;
    MixerState last_;
};

} // namespace fadewell::cli

#pragma once

#include "control/values/BusValues.h"
#include "control/values/MixerState.h"

#include <QDBusConnection>
#include <QVariantList>

#include <vector>

namespace fadewell::cli {

/// The running program, over the session bus. Calls block; what goes wrong is thrown as a Failure.
class MixerClient final {
public:
    /// Throws when there is no session bus or the program doesn't run.
    explicit MixerClient(QDBusConnection connection);

    /// Calls a method of the interface; answers its out arguments.
    QVariantList call(const char* method, const QVariantList& arguments = {}) const;

    template <class Entry>
    [[nodiscard]] Entry entry(const char* method, const QVariantList& arguments = {}) const
    {
        Entry result;
        fromBus(map(call(method, arguments)), result);
        return result;
    }

    template <class Entry>
    [[nodiscard]] std::vector<Entry> list(const char* method) const
    {
        return fromBusList<Entry>(maps(call(method)));
    }

    [[nodiscard]] MixerState state() const;

    [[nodiscard]] QDBusConnection connection() const { return connection_; }

    /// Whether the program still holds its name.
    [[nodiscard]] bool isRunning() const;

private:
    [[nodiscard]] static BusMap map(const QVariantList& reply);
    [[nodiscard]] static BusMapList maps(const QVariantList& reply);

    QDBusConnection connection_;
};

} // namespace fadewell::cli

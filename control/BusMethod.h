#pragma once

#include <QString>
#include <QVariantList>

#include <functional>
#include <variant>
#include <vector>

namespace fadewell {

/// Why a call failed, as the caller sees it.
struct BusError {
    const char* name; ///< one of bus::error
    QString message;
};

/// What a method answers: its out arguments, or why there are none.
using BusReply = std::variant<QVariantList, BusError>;

/// Takes what a method answers, once; on the main thread.
using BusAnswer = std::function<void(const BusReply& reply)>;

/// One method of the bus interface.
struct BusMethod {
    struct Argument {
        const char* name;
        const char* type; ///< a D-Bus signature
    };

    const char* name;
    std::vector<Argument> in;
    std::vector<Argument> out;
    /// Gets arguments of exactly the types of `in`.
    std::function<BusReply(const QVariantList&)> handle;
    /// Instead of `handle` where an answer takes a while.
    std::function<void(const QVariantList&, BusAnswer)> handleLater{};
};

/// A read-only property of the bus interface.
struct BusProperty {
    const char* name;
    const char* type;
    std::function<QVariant()> read;
};

} // namespace fadewell

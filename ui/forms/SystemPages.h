#pragma once

#include "ui/forms/SystemPage.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace fadewell {

/// The way to the pages of the system's settings that Fadewell depends on; where a desktop has no
/// such page, to our own explanation. [main thread]
class SystemPages final {
public:
    struct Environment {
        QStringList desktops; ///< as the session names itself, the most exact first
        std::function<bool(const QString& program)> isInstalled;
        std::function<bool(const QString& program, const QStringList& arguments)> start;
        std::function<void(SystemPage page)> explain;
    };

    explicit SystemPages(Environment environment);
    /// Those of this session; `explain` shows our own explanation.
    [[nodiscard]] static SystemPages ofSession(std::function<void(SystemPage page)> explain);

    /// What a button that opens the page says.
    [[nodiscard]] QString openTitle(SystemPage page) const;

    /// Opens the page, or the explanation where there is none or it doesn't start.
    void open(SystemPage page) const;

private:
    /// A program and its arguments; empty: this desktop has no such page.
    [[nodiscard]] QStringList command(SystemPage page) const;

    Environment environment_;
};

} // namespace fadewell

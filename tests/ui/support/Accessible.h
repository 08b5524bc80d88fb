#pragma once

#include "tests/ui/support/Person.h"

#include <atspi/atspi.h>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fadewell::integration {

/// One object of the accessibility tree, as a screen reader gets it. Nothing is cached: what is
/// asked is asked of the program.
class Accessible final {
public:
    /// The desktop: the parent of every program. Throws std::runtime_error without an accessibility
    /// bus.
    [[nodiscard]] static Accessible desktop();

    [[nodiscard]] std::string name() const;
    [[nodiscard]] std::string description() const;
    [[nodiscard]] AtspiRole role() const;
    [[nodiscard]] bool has(AtspiStateType state) const;
    [[nodiscard]] std::vector<Accessible> children() const;

    /// The first object below this one, at any depth, with this role and name; absent when there is
    /// none now.
    [[nodiscard]] std::optional<Accessible> find(AtspiRole role, const std::string& name) const;
    /// Waits for one; throws std::runtime_error with the whole tree when none comes.
    [[nodiscard]] Accessible expect(AtspiRole role, const std::string& name) const;

    /// False when there is no such action.
    [[nodiscard]] bool perform(const std::string& action) const;

    struct Range {
        double value = 0;
        double minimum = 0;
        double maximum = 0;
        double step = 0;
    };
    [[nodiscard]] std::optional<Range> range() const;
    void setValue(double value) const;

    /// Where it is on the screen.
    [[nodiscard]] Bounds bounds() const;

    /// This object and all below it, a line each.
    [[nodiscard]] std::string tree(int depth = 0) const;

private:
    explicit Accessible(AtspiAccessible* object);

    std::shared_ptr<AtspiAccessible> object_;
};

} // namespace fadewell::integration

#include "tests/ui/support/Accessible.h"

#include "tests/integration/support/Await.h"

#include <fmt/format.h>
#include <stdexcept>
#include <utility>

namespace fadewell::integration {
namespace {

template <class Object>
std::shared_ptr<Object> owned(Object* object)
{
    return {object, [](Object* each) {
                if (each != nullptr) {
                    g_object_unref(each);
                }
            }};
}

std::string taken(gchar* text)
{
    std::string copy = text == nullptr ? "" : text;
    g_free(text);
    return copy;
}

} // namespace

Accessible::Accessible(AtspiAccessible* object)
    : object_(owned(object))
{
    // Of a program, for everything in it.
    if (object_ && role() == ATSPI_ROLE_APPLICATION) {
        atspi_accessible_set_cache_mask(object_.get(), ATSPI_CACHE_NONE);
    }
}

Accessible Accessible::desktop()
{
    atspi_init(); // Once is enough, more does no harm.
    Accessible desktop(atspi_get_desktop(0));
    if (!desktop.object_) {
        throw std::runtime_error("There is no accessibility bus");
    }
    return desktop;
}

std::string Accessible::name() const
{
    return taken(atspi_accessible_get_name(object_.get(), nullptr));
}

std::string Accessible::description() const
{
    return taken(atspi_accessible_get_description(object_.get(), nullptr));
}

AtspiRole Accessible::role() const
{
    return atspi_accessible_get_role(object_.get(), nullptr);
}

bool Accessible::has(AtspiStateType state) const
{
    const auto states = owned(atspi_accessible_get_state_set(object_.get()));
    return states && atspi_state_set_contains(states.get(), state) != FALSE;
}

std::vector<Accessible> Accessible::children() const
{
    std::vector<Accessible> result;
    const int count = atspi_accessible_get_child_count(object_.get(), nullptr);
    for (int index = 0; index < count; ++index) {
        Accessible child(atspi_accessible_get_child_at_index(object_.get(), index, nullptr));
        if (child.object_) { // It may have gone meanwhile.
            result.push_back(std::move(child));
        }
    }
    return result;
}

std::optional<Accessible> Accessible::find(AtspiRole role, const std::string& name) const
{
    for (const auto& child : children()) {
        if (child.role() == role && child.name() == name) {
            return child;
        }
        if (auto found = child.find(role, name)) {
            return found;
        }
    }
    return std::nullopt;
}

Accessible Accessible::expect(AtspiRole role, const std::string& name) const
{
    std::optional<Accessible> found;
    if (!await([&] { return (found = find(role, name)).has_value(); })) {
        throw std::runtime_error(
            fmt::format("No {} “{}” in\n{}", taken(atspi_role_get_name(role)), name, tree()));
    }
    return *found;
}

bool Accessible::perform(const std::string& action) const
{
    const auto actions = owned(atspi_accessible_get_action_iface(object_.get()));
    const int count = actions ? atspi_action_get_n_actions(actions.get(), nullptr) : 0;
    for (int index = 0; index < count; ++index) {
        if (taken(atspi_action_get_action_name(actions.get(), index, nullptr)) == action) {
            return atspi_action_do_action(actions.get(), index, nullptr) != FALSE;
        }
    }
    return false;
}

std::optional<Accessible::Range> Accessible::range() const
{
    const auto value = owned(atspi_accessible_get_value_iface(object_.get()));
    if (!value) {
        return std::nullopt;
    }
    return Range{atspi_value_get_current_value(value.get(), nullptr),
                 atspi_value_get_minimum_value(value.get(), nullptr),
                 atspi_value_get_maximum_value(value.get(), nullptr),
                 atspi_value_get_minimum_increment(value.get(), nullptr)};
}

void Accessible::setValue(double value) const
{
    const auto own = owned(atspi_accessible_get_value_iface(object_.get()));
    if (!own || atspi_value_set_current_value(own.get(), value, nullptr) == FALSE) {
        throw std::runtime_error("“" + name() + "” takes no value");
    }
}

Bounds Accessible::bounds() const
{
    const auto component = owned(atspi_accessible_get_component_iface(object_.get()));
    const std::unique_ptr<AtspiRect, void (*)(void*)> rect(
        component ? atspi_component_get_extents(component.get(), ATSPI_COORD_TYPE_SCREEN, nullptr)
                  : nullptr,
        g_free);
    return rect ? Bounds{rect->x, rect->y, rect->width, rect->height} : Bounds{};
}

std::string Accessible::tree(int depth) const
{
    auto text = fmt::format("{:{}}{} “{}” {}",
                            "",
                            2 * depth,
                            taken(atspi_accessible_get_role_name(object_.get(), nullptr)),
                            name(),
                            description());
    if (const auto values = range()) {
        text += fmt::format(
            " {} of {}…{} by {}", values->value, values->minimum, values->maximum, values->step);
    }
    const auto actions = owned(atspi_accessible_get_action_iface(object_.get()));
    const int count = actions ? atspi_action_get_n_actions(actions.get(), nullptr) : 0;
    for (int index = 0; index < count; ++index) {
        text += " [" + taken(atspi_action_get_action_name(actions.get(), index, nullptr)) + "]";
    }
    text += '\n';
    for (const auto& child : children()) {
        text += child.tree(depth + 1);
    }
    return text;
}

} // namespace fadewell::integration

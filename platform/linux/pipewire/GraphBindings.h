#pragma once

#include "platform/linux/pipewire/GraphObjects.h"

#include <cstdint>
#include <map>
#include <memory>

namespace fadewell::pipewire {

/// Keeps the objects of the graph bound, so that the server tells what they are and do, and writes
/// what it tells into them. Belongs to the connection's lock.
class GraphBindings final {
public:
    /// Hears that an object's fields were brought up to date, or that the server refused a write.
    class Owner {
    public:
        virtual ~Owner() = default;
        virtual void clientUpdated(std::uint32_t id) = 0;
        virtual void nodeUpdated(std::uint32_t id) = 0;
        virtual void linkUpdated(std::uint32_t id) = 0;
        virtual void deviceUpdated(std::uint32_t id) = 0;
        virtual void refused(std::uint32_t id, int result) = 0;
    };

    /// One bound object.
    class Binding;

    GraphBindings();
    ~GraphBindings();

    /// The object must stay where it is until it is unbound.
    void bind(pw_registry* registry, Owner& owner, GraphClient& client);
    void bind(pw_registry* registry, Owner& owner, GraphNode& node);
    void bind(pw_registry* registry, Owner& owner, GraphLink& link);
    void bind(pw_registry* registry, Owner& owner, GraphDevice& device);
    void unbind(std::uint32_t id);
    void clear();

    /// Null when the object isn't bound.
    [[nodiscard]] pw_proxy* proxy(std::uint32_t id) const;

private:
    std::map<std::uint32_t, std::unique_ptr<Binding>> bindings_;
};

} // namespace fadewell::pipewire

#pragma once

#include "platform/linux/pipewire/Connection.h"

#include <pipewire/pipewire.h>

#include <memory>
#include <string>

namespace fadewell::pipewire {

/// An output that runs but never takes a frame: streams that are not ready for their tap wait here,
/// and lose nothing. Ordinary enough for a Pulse client to be told of its stream while it waits.
///
/// Other programs see it as an output, so it exists for moments only, and never without a real one:
/// the session manager would make it the default. Belongs to the connection's lock.
class Lobby final {
public:
    /// Null when the server refused it.
    [[nodiscard]] static std::unique_ptr<Lobby> create(Connection& connection, std::string name);
    ~Lobby();
    Lobby(const Lobby&) = delete;
    Lobby& operator=(const Lobby&) = delete;

    [[nodiscard]] const std::string& name() const { return name_; }
    /// SPA_ID_INVALID until the server has named it.
    [[nodiscard]] std::uint32_t node() const { return pw_stream_get_node_id(stream_); }

private:
    Lobby(std::string name, pw_stream* stream)
        : name_(std::move(name))
        , stream_(stream)
    {}

    std::string name_;
    pw_stream* stream_;
};

} // namespace fadewell::pipewire

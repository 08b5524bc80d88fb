#include "platform/linux/desktop/SwayFrontWindow.h"

#include "base/LenientJson.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <utility>
#include <vector>

namespace fadewell {
namespace {

// A request and its answer begin alike: a word, the length of what follows, and the kind.
constexpr std::string_view magic = "i3-ipc";
constexpr std::uint32_t getTree = 4;
constexpr std::uint32_t longestTree = 16U << 20U;
constexpr suseconds_t patience = 50'000; // microseconds, for each of writing and reading

using Header = std::array<char, magic.size() + 2 * sizeof(std::uint32_t)>;

Header request()
{
    Header header{};
    std::copy(magic.begin(), magic.end(), header.begin());
    std::memcpy(header.data() + magic.size() + sizeof(std::uint32_t), &getTree, sizeof(getTree));
    return header;
}

bool readAll(int socket, char* into, std::size_t size)
{
    while (size > 0) {
        const auto count = recv(socket, into, size, 0);
        if (count <= 0) {
            return false;
        }
        into += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

std::optional<std::string> answer(int socket)
{
    Header header{};
    std::uint32_t length = 0;
    if (!readAll(socket, header.data(), header.size()) ||
        std::string_view(header.data(), magic.size()) != magic)
    {
        return std::nullopt;
    }
    std::memcpy(&length, header.data() + magic.size(), sizeof(length));
    if (length > longestTree) {
        return std::nullopt;
    }
    std::string text(length, '\0');
    return readAll(socket, text.data(), text.size()) ? std::optional(std::move(text))
                                                     : std::nullopt;
}

FrontWindow::Window windowOf(const nlohmann::json& container)
{
    FrontWindow::Window window;
    const auto pid = numberMember(container, "pid").value_or(0);
    if (pid > 0 && pid <= std::numeric_limits<std::int32_t>::max()) {
        window.pid = static_cast<std::int32_t>(pid);
    }
    window.appID = stringMember(container, "app_id").value_or("");
    return window;
}

} // namespace

SwayFrontWindow::SwayFrontWindow(std::string socket)
    : socket_(std::move(socket))
{}

std::optional<FrontWindow::Window> SwayFrontWindow::focused(std::string_view tree)
{
    const auto root = parseJson(tree);
    // Not by recursion: nobody promises how deep a tree is.
    std::vector<const nlohmann::json*> open;
    if (root) {
        open.push_back(&*root);
    }
    while (!open.empty()) {
        const auto* container = open.back();
        open.pop_back();
        if (!container->is_object()) {
            continue;
        }
        if (boolMember(*container, "focused") == true) {
            // A workspace has the focus when there is no window on it.
            const auto window = windowOf(*container);
            return window.pid ? std::optional(window) : std::nullopt;
        }
        for (const char* list : {"nodes", "floating_nodes"}) {
            const auto children = container->find(list);
            if (children != container->end() && children->is_array()) {
                for (const auto& child : *children) {
                    open.push_back(&child);
                }
            }
        }
    }
    return std::nullopt;
}

FileDescriptor SwayFrontWindow::connect() const
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    FileDescriptor made(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!made || socket_.size() >= sizeof(address.sun_path)) {
        return {};
    }
    std::copy(socket_.begin(), socket_.end(), address.sun_path);
    const timeval limit{0, patience};
    setsockopt(made.get(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof(limit));
    setsockopt(made.get(), SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof(limit));
    const auto* target = static_cast<const sockaddr*>(static_cast<const void*>(&address));
    return ::connect(made.get(), target, sizeof(address)) == 0 ? std::move(made) : FileDescriptor();
}

std::optional<FrontWindow::Window> SwayFrontWindow::window()
{
    const auto socket = connect();
    const auto asked = request();
    if (!socket || send(socket.get(), asked.data(), asked.size(), MSG_NOSIGNAL) !=
                       static_cast<ssize_t>(asked.size()))
    {
        return std::nullopt;
    }
    const auto tree = answer(socket.get());
    return tree ? focused(*tree) : std::nullopt;
}

} // namespace fadewell

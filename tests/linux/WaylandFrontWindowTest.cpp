#include "platform/linux/desktop/WaylandFrontWindow.h"

#include "platform/linux/FileDescriptor.h"
#include "tests/linux/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <vector>
#include <wayland-server.h>
#include <wlr-foreign-toplevel-management-unstable-v1-server-protocol.h>

namespace fadewell {
namespace {

using Window = FrontWindow::Window;

struct Toplevel {
    const char* appID; ///< null: not told
    std::vector<std::uint32_t> states;
};

/// A compositor without a screen that lists the windows it is given, unless they are null.
class FakeCompositor {
public:
    FakeCompositor(const std::string& path, const std::vector<Toplevel>* toplevels)
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof(address.sun_path) - 1);
        unlink(path.c_str());
        const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const auto* name = static_cast<const sockaddr*>(static_cast<const void*>(&address));
        EXPECT_EQ(bind(listener, name, sizeof(address)), 0);
        EXPECT_EQ(listen(listener, 4), 0);
        EXPECT_EQ(wl_display_add_socket_fd(display_, listener), 0);
        if (toplevels != nullptr) {
            wl_global_create(display_,
                             &zwlr_foreign_toplevel_manager_v1_interface,
                             3,
                             const_cast<std::vector<Toplevel>*>(toplevels),
                             list);
        }
        thread_ = std::thread([this] { wl_display_run(display_); });
    }
    ~FakeCompositor()
    {
        wl_display_terminate(display_);
        thread_.join();
        wl_display_destroy_clients(display_);
        wl_display_destroy(display_);
    }

private:
    static void list(wl_client* client, void* toplevels, std::uint32_t version, std::uint32_t id)
    {
        const auto versionNumber = static_cast<int>(version);
        auto* manager = wl_resource_create(
            client, &zwlr_foreign_toplevel_manager_v1_interface, versionNumber, id);
        for (const auto& each : *static_cast<std::vector<Toplevel>*>(toplevels)) {
            auto* handle = wl_resource_create(
                client, &zwlr_foreign_toplevel_handle_v1_interface, versionNumber, 0);
            zwlr_foreign_toplevel_manager_v1_send_toplevel(manager, handle);
            zwlr_foreign_toplevel_handle_v1_send_title(handle, "a title");
            if (each.appID != nullptr) {
                zwlr_foreign_toplevel_handle_v1_send_app_id(handle, each.appID);
            }
            auto states = each.states;
            wl_array array{
                .size = states.size() * sizeof(std::uint32_t), .alloc = 0, .data = states.data()};
            zwlr_foreign_toplevel_handle_v1_send_state(handle, &array);
            zwlr_foreign_toplevel_handle_v1_send_done(handle);
        }
    }

    wl_display* const display_ = wl_display_create();
    std::thread thread_;
};

TEST(WaylandFrontWindowTest, TheActivatedWindowNamesItsApplication)
{
    constexpr auto maximized = ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MAXIMIZED;
    constexpr auto activated = ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED;
    const struct {
        std::vector<Toplevel> toplevels;
        std::optional<Window> expected;
    } cases[] = {
        {{}, {}},
        {{{"idle", {}}, {"max", {maximized}}}, {}},
        {{{"idle", {maximized}}, {"foot", {maximized, activated}}}, Window{{}, "foot"}},
        {{{nullptr, {activated}}}, Window{{}, ""}},
        {{{"own", {activated}}}, Window{getpid(), "own"}},
    };
    const TemporaryFolder folder;
    const auto path = (folder.path() / "wayland").string();
    for (const auto& [toplevels, expected] : cases) {
        const FakeCompositor compositor(path, &toplevels);
        WaylandFrontWindow front("own", path);
        EXPECT_TRUE(front.isTold());
        EXPECT_EQ(front.window(), expected);
    }
}

TEST(WaylandFrontWindowTest, OtherCompositorsTellNothing)
{
    const TemporaryFolder folder;
    const auto path = (folder.path() / "wayland").string();
    WaylandFrontWindow front("own", path);
    EXPECT_FALSE(front.isTold());
    const FakeCompositor compositor(path, nullptr);
    EXPECT_FALSE(front.isTold());
    EXPECT_EQ(front.window(), std::nullopt);
}

} // namespace
} // namespace fadewell

#include "base/VirtualTime.h"
#include "platform/linux/XdgWorkspace.h"
#include "platform/linux/desktop/Session.h"
#include "platform/linux/desktop/SwayFrontWindow.h"
#include "tests/linux/FakeMachine.h"

#include <gtest/gtest.h>
#include <map>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace fadewell {
namespace {

using Window = FrontWindow::Window;

TEST(SwayFrontWindowTest, FindsTheFocusedWindowOfAnyTree)
{
    const struct {
        const char* tree;
        std::optional<Window> expected;
    } cases[] = {
        {R"({"nodes":[{"focused":false,"pid":1},{"nodes":[{"focused":true,"pid":7,"app_id":"foot"}]}]})",
         Window{7, "foot"}},
        {R"({"nodes":[{"floating_nodes":[{"focused":true,"pid":8,"app_id":null}]}]})",
         Window{8, ""}},
        {R"({"nodes":[{"type":"workspace","focused":true,"nodes":[]}]})", {}},
        {R"({"focused":true,"pid":-1})", {}},
        {R"({"focused":true,"pid":4294967296})", {}},
        {R"({"nodes":{"focused":true},"floating_nodes":[3,null,[{"focused":true,"pid":9}]]})", {}},
        {"[]", {}},
        {"{", {}},
    };
    for (const auto& [tree, expected] : cases) {
        EXPECT_EQ(SwayFrontWindow::focused(tree), expected) << tree;
    }
    EXPECT_EQ(SwayFrontWindow("/nowhere").window(), std::nullopt);
}

/// Takes one connection, reads the request and answers with what it was given.
std::string requestSeenBy(const std::string& socketPath,
                          const std::string& answer,
                          const std::function<void()>& ask)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    socketPath.copy(address.sun_path, sizeof(address.sun_path) - 1);
    const FileDescriptor listener(socket(AF_UNIX, SOCK_STREAM, 0));
    EXPECT_EQ(
        bind(listener.get(), static_cast<sockaddr*>(static_cast<void*>(&address)), sizeof(address)),
        0);
    EXPECT_EQ(listen(listener.get(), 1), 0);
    std::string request(14, '\0');
    std::thread compositor([&] {
        const FileDescriptor peer(accept(listener.get(), nullptr, nullptr));
        EXPECT_EQ(recv(peer.get(), request.data(), request.size(), MSG_WAITALL), 14);
        send(peer.get(), answer.data(), answer.size(), MSG_NOSIGNAL);
    });
    ask();
    compositor.join();
    unlink(socketPath.c_str());
    return request;
}

TEST(SwayFrontWindowTest, AsksForTheTreeAndSurvivesAnyAnswer)
{
    using namespace std::string_literals;
    const std::string tree = R"({"focused":true,"pid":7,"app_id":"foot"})";
    const struct {
        std::string answer;
        std::optional<Window> expected;
    } cases[] = {
        {"i3-ipc" + std::string(1, static_cast<char>(tree.size())) + "\0\0\0\4\0\0\0"s + tree,
         Window{7, "foot"}},
        {"i3-ipc\x7F\0\0\0\4\0\0\0"s + tree, {}}, // ends before it is complete
        {"i3-ipc\xFF\xFF\xFF\xFF\4\0\0\0"s, {}},
        {"i4-ipc\0\0\0\0\4\0\0\0"s, {}},
        {"", {}},
    };
    const TemporaryFolder folder;
    const auto path = (folder.path() / "sway").string();
    for (const auto& [answer, expected] : cases) {
        std::optional<Window> window;
        const auto request =
            requestSeenBy(path, answer, [&] { window = SwayFrontWindow(path).window(); });
        EXPECT_EQ(request, "i3-ipc\0\0\0\0\4\0\0\0"s);
        EXPECT_EQ(window, expected) << answer;
    }
}

TEST(SessionTest, WaylandHidesTheKeyboardEvenWhereXProgramsRun)
{
    using Display = Session::Display;
    const struct {
        std::map<std::string, std::string> environment;
        Session expected;
    } cases[] = {
        {{}, {Display::none, ""}},
        {{{"DISPLAY", ":0"}, {"SWAYSOCK", "/s"}}, {Display::x11, ""}},
        {{{"DISPLAY", ":0"}, {"WAYLAND_DISPLAY", "wayland-0"}}, {Display::wayland, ""}},
        {{{"DISPLAY", ":0"}, {"XDG_SESSION_TYPE", "wayland"}}, {Display::wayland, ""}},
        {{{"WAYLAND_DISPLAY", "wayland-1"}, {"SWAYSOCK", "/s"}}, {Display::wayland, "/s"}},
    };
    for (const auto& each : cases) {
        const auto session = Session::from([&](const char* name) -> std::optional<std::string> {
            const auto found = each.environment.find(name);
            return found == each.environment.end() ? std::nullopt : std::optional(found->second);
        });
        EXPECT_EQ(session, each.expected);
    }
}

class ScriptedFront final : public FrontWindow {
public:
    explicit ScriptedFront(std::optional<Window>& window)
        : window_(window)
    {}
    [[nodiscard]] bool isTold() override { return true; }
    [[nodiscard]] std::optional<Window> window() override { return window_; }

private:
    std::optional<Window>& window_;
};

TEST(XdgWorkspaceTest, TheApplicationInFrontIsTheOneThatItsSoundBelongsTo)
{
    const FakeMachine machine;
    machine.install("org.example.Player", "Name=Player\nExec=player %F\n");
    machine.program("/usr/bin/player");
    machine.start({.pid = 40, .executable = "/usr/bin/player"});
    machine.start({.pid = 41, .parent = 40, .executable = "/usr/bin/player"});
    const auto identities = std::make_shared<AppIdentities>(machine.config());
    std::optional<Window> front;
    XdgWorkspace workspace(
        identities, VirtualTime::create()->makeQueue(), std::make_unique<ScriptedFront>(front));
    const auto id = [&] {
        const auto application = workspace.frontmost();
        return application ? application->bundleID.value_or("nameless") : "none";
    };
    EXPECT_EQ(id(), "none");
    for (const auto& window : {Window{40, ""}, Window{41, "x"}, Window{{}, "org.example.Player"}}) {
        front = window;
        EXPECT_EQ(id(), "org.example.Player") << window.pid.value_or(0);
    }
    const auto playing = identities->bundleID(41, {});
    EXPECT_EQ(playing, "org.example.Player");
    front = Window{40, ""};
    EXPECT_EQ(id(), playing);
    EXPECT_EQ(workspace.frontmost()->name, "Player");
    EXPECT_TRUE(workspace.tellsFrontmost());
    EXPECT_FALSE(XdgWorkspace(identities, nullptr).tellsFrontmost());
}

} // namespace
} // namespace fadewell

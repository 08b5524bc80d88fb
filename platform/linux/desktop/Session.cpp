#include "platform/linux/desktop/Session.h"

#include <cstdlib>

namespace fadewell {

Session Session::current()
{
    return from([](const char* variable) -> std::optional<std::string> {
        const char* value = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): nobody sets it
        return value != nullptr && *value != '\0' ? std::optional<std::string>(value)
                                                  : std::nullopt;
    });
}

Session Session::from(const Lookup& environment)
{
    Session session;
    if (environment("WAYLAND_DISPLAY") || environment("XDG_SESSION_TYPE") == "wayland") {
        session.display = Display::wayland;
        session.swaySocket = environment("SWAYSOCK").value_or("");
    } else if (environment("DISPLAY")) {
        session.display = Display::x11;
    }
    return session;
}

} // namespace fadewell

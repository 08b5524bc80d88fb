#include "main/Entry.h"
#include "main/Program.h"

#include <QCoreApplication>

#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace {

bool hasDisplay()
{
    const auto isSet = [](const char* name) {
        const char* value = std::getenv(name);
        return value != nullptr && *value != '\0';
    };
    return isSet("WAYLAND_DISPLAY") || isSet("DISPLAY");
}

/// Becomes the program with windows, which is one of its own so that this one stays small: beside
/// this one where it was built, among the helpers where it was installed. Comes back where there is
/// none.
void becomeProgramWithWindows(char** argv)
{
    std::error_code error;
    const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) {
        return;
    }
    for (const auto* folder : {".", FADEWELL_HELPERS}) {
        execv((self.parent_path() / folder / "fadewell-gui").c_str(), argv);
    }
}

} // namespace

int main(int argc, char** argv)
{
    using namespace fadewell;
    return enter(
        argc,
        argv,
        [&](const Options& options,
            TerminationSignals& termination,
            const std::shared_ptr<Heartbeat>& heartbeat) {
            const QCoreApplication application(argc, argv);
            return Program(options, termination, heartbeat).run();
        },
        [argv](const Options& options) {
            if (!options.isHeadless && hasDisplay()) {
                becomeProgramWithWindows(argv);
            }
        });
}

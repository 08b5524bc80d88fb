#include "tests/integration/support/Restriction.h"

#include "tests/integration/support/ChildProcess.h"
#include "tests/integration/support/Session.h"

#include <cstdlib>
#include <fstream>

namespace fadewell::integration {

Restriction::Restriction()
    : folder_(std::filesystem::path(std::getenv("XDG_CONFIG_HOME")) / "pipewire/client-rt.conf.d")
{
    std::filesystem::create_directories(folder_);
    std::ofstream(folder_ / "restricted.conf")
        << "context.properties = { pipewire.client.access = restricted }\n";
}

Restriction::~Restriction()
{
    std::filesystem::remove_all(folder_);
}

void Restriction::grant(const std::string& permissions)
{
    for (const auto& object : Session::objects()) {
        if (object.value("/info/props/pipewire.access"_json_pointer, "") == "restricted") {
            const auto id = std::to_string(object.at("id").get<int>());
            // It knows no object before the server has told it.
            static_cast<void>(runTool({"sh",
                                       "-c",
                                       "(sleep 0.5; echo permissions " + id + " -1 " + permissions +
                                           "; sleep 0.2; echo quit) | pw-cli"}));
        }
    }
}

} // namespace fadewell::integration

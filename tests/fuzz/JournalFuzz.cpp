// What an earlier run left of where the apps were to play, and the names of its taps.

#include "platform/linux/Utf8.h"
#include "platform/linux/pipewire/taps/TapNames.h"
#include "platform/linux/pipewire/taps/TargetJournal.h"
#include "tests/fuzz/Fuzz.h"

#include <fstream>

namespace {

using namespace fadewell;
using namespace fadewell::pipewire;
using fuzz::require;
namespace fs = std::filesystem;

/// No process has had this number.
constexpr ProcessInstance earlierRun{.pid = 2'147'483'647, .start = 1};

struct Folder {
    Folder()
    {
        std::string name = fs::temp_directory_path() / "fuzz-XXXXXX";
        require(mkdtemp(name.data()) != nullptr, "a temporary folder");
        path = name;
    }
    ~Folder()
    {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    fs::path path;
};

void readNames(std::string_view text)
{
    static_cast<void>(isOwnNodeName(text));
    static_cast<void>(isLeftoverNodeName(text));
    if (const auto instance = ProcessInstance::parse(text)) {
        require(ProcessInstance::parse(instance->text()) == instance,
                "a run is named as it is read");
        require(isNodeNameOf(*instance, tapNodeName(*instance, 7)), "a tap's name tells its run");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Folder folder;
    const auto text = fuzz::textOf(data, size);
    const auto lines = fuzz::linesOf(text);
    readNames(lines.front());
    std::ofstream(folder.path / ("targets-" + earlierRun.text() + ".json")) << text;
    static_cast<void>(TargetJournal(folder.path).leftTarget(1, "player"));

    TargetJournal(folder.path, earlierRun).record({1, lines.front(), lines.back()});
    TargetJournal next(folder.path);
    require(!isValidUtf8(text) || next.leftTarget(1, lines.front()) == lines.back(),
            "what is recorded is found by the next run");
    next.forgetLeft();
    require(fs::is_empty(folder.path), "what is forgotten is gone");
    return 0;
}

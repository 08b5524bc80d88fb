#include "tests/ui/support/Person.h"

#include "tests/integration/support/Await.h"
#include "tests/integration/support/ChildProcess.h"

#include <atspi/atspi.h>
#include <cstdlib>
#include <fmt/format.h>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>

namespace fadewell::integration {
namespace {

std::string contents(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace

void click(int x, int y)
{
    if (atspi_generate_mouse_event(x, y, "b1c", nullptr) == FALSE) {
        throw std::runtime_error("The screen takes no clicks");
    }
}

void strike(unsigned keySymbol)
{
    if (atspi_generate_keyboard_event(
            static_cast<glong>(keySymbol), nullptr, ATSPI_KEY_SYM, nullptr) == FALSE)
    {
        throw std::runtime_error("The screen takes no keys");
    }
}

void takePicture(const std::filesystem::path& file, const Bounds& bounds)
{
    const auto size = fmt::format("{}x{}", bounds.width, bounds.height);
    const auto place = fmt::format("{}+{},{}", std::getenv("DISPLAY"), bounds.x, bounds.y);
    std::string last;
    const auto isStill = [&] {
        const auto taken = runCommand({"ffmpeg",
                                       "-y",
                                       "-loglevel",
                                       "error",
                                       "-f",
                                       "x11grab",
                                       "-draw_mouse",
                                       "0",
                                       "-video_size",
                                       size,
                                       "-i",
                                       place,
                                       "-frames:v",
                                       "1",
                                       "-pix_fmt",
                                       "rgb24",
                                       file.string()});
        if (taken.code != 0) {
            throw std::runtime_error("No picture: " + taken.errors);
        }
        const auto now = contents(file);
        return now == std::exchange(last, now);
    };
    // What never stands still, such as a level, is taken as it is by then.
    static_cast<void>(await(isStill, std::chrono::seconds(3)));
}

} // namespace fadewell::integration

#include "demo/Screen.h"

#include <algorithm>
#include <cstdio>
#include <fmt/format.h>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

namespace fadewell::demo {
namespace {

struct Size {
    std::size_t lines = 24;
    std::size_t columns = 80;
};

Size terminalSize()
{
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_row == 0) {
        return {};
    }
    return {size.ws_row, size.ws_col};
}

std::string_view cut(std::string_view line, std::size_t columns)
{
    std::size_t characters = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const bool startsCharacter = (static_cast<unsigned char>(line[i]) & 0xC0U) != 0x80U;
        if (startsCharacter && ++characters > columns) {
            return line.substr(0, i);
        }
    }
    return line;
}

} // namespace

Screen::Screen()
    : isTerminal_(isatty(STDOUT_FILENO) == 1)
{
    if (isTerminal_) {
        std::fputs("\x1b[?25l", stdout); // hides the cursor
    }
}

Screen::~Screen()
{
    if (isTerminal_) {
        std::fputs("\x1b[?25h", stdout);
        std::fflush(stdout);
    }
}

void Screen::show(const std::vector<std::string>& lines)
{
    std::string text;
    if (isTerminal_) {
        const Size size = terminalSize();
        // What has scrolled away can't be drawn over.
        const std::size_t count = std::min(lines.size(), size.lines - 1);
        if (shownLines_ > 0) {
            text += fmt::format("\x1b[{}F", std::min(shownLines_, size.lines - 1));
        }
        for (std::size_t i = 0; i < count; ++i) {
            text += fmt::format("{}\x1b[K\n", cut(lines[i], size.columns - 1));
        }
        text += "\x1b[J";
        shownLines_ = count;
    } else {
        text = fmt::format("{}\n\n", fmt::join(lines, "\n"));
    }
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

} // namespace fadewell::demo

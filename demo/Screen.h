#pragma once

#include <string>
#include <vector>

namespace fadewell::demo {

/// Shows a table again and again: in place on a terminal, else one below the other. [one thread]
class Screen {
public:
    Screen();
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// Standard output; a line longer than the terminal is cut.
    void show(const std::vector<std::string>& lines);

private:
    bool isTerminal_;
    std::size_t shownLines_ = 0;
};

} // namespace fadewell::demo

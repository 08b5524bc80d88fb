#include "tests/bench/PathTable.h"

#include <cstdio>
#include <fmt/format.h>

namespace fadewell::integration {
namespace {

void print(const std::string& name,
           const std::string& value,
           const std::string& goal,
           const char* verdict)
{
    fmt::print("{:<40} {:<42} {:<26} {}\n", name, value, goal, verdict);
    std::fflush(stdout);
}

} // namespace

PathTable::PathTable()
{
    print("", "measured", "goal", "");
}

void PathTable::row(const std::string& name,
                    const std::string& value,
                    const std::string& goal,
                    bool isMet)
{
    failed_ += isMet ? 0 : 1;
    print(name, value, goal, isMet ? "ok" : "FAILED");
}

void PathTable::row(const std::string& name, const std::string& value)
{
    print(name, value, "", "");
}

} // namespace fadewell::integration

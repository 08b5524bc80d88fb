#include "base/ProgramName.h"

#include <utility>

namespace fadewell {

std::vector<std::string> ProgramName::extract(std::string& text)
{
    std::vector<std::string> names;
    if (text.find_first_of({begin, end}) == std::string::npos) {
        return names;
    }
    std::string plain;
    std::string name;
    bool isInside = false;
    for (const char character : text) {
        if (character == begin || character == end) {
            isInside = character == begin;
            if (!name.empty()) {
                names.push_back(std::exchange(name, {}));
            }
            continue;
        }
        plain += character;
        if (isInside) {
            name += character;
        }
    }
    text = std::move(plain);
    return names;
}

} // namespace fadewell

#include "platform/linux/identity/ClientName.h"

#include "platform/linux/Utf8.h"
#include "platform/linux/identity/KnownApps.h"

namespace fadewell {
namespace {

/// Bridges of other sound interfaces put the program's name in brackets behind their own.
std::string_view withoutBridge(std::string_view name)
{
    const std::size_t open = name.find(" [");
    if (open == std::string_view::npos || !name.ends_with(']')) {
        return name;
    }
    return KnownApps::instance().isGenericName(name.substr(0, open))
               ? name.substr(open + 2, name.size() - open - 3)
               : name;
}

} // namespace

std::string tidied(std::string_view text)
{
    constexpr std::size_t maximumSize = 200;
    std::string tidy;
    while (!text.empty() && tidy.size() < maximumSize - 4) {
        const auto decoded = decodeUtf8(text);
        const char32_t c = decoded ? decoded->codePoint : U'\0';
        const bool isControl = c < 0x20 || (c >= 0x7f && c < 0xa0);
        if (!isControl && !(tidy.empty() && c == U' ')) {
            tidy += text.substr(0, decoded->length);
        }
        text.remove_prefix(decoded ? decoded->length : 1);
    }
    tidy.resize(tidy.find_last_not_of(' ') + 1);
    return tidy;
}

ClientHints tidied(const ClientHints& hints)
{
    return {tidied(hints.portalAppID),
            tidied(hints.applicationID),
            tidied(hints.applicationName),
            tidied(hints.processBinary),
            tidied(hints.iconName),
            tidied(hints.nodeName),
            tidied(hints.clientAPI)};
}

std::string clientName(const ClientHints& tidiedHints)
{
    for (const auto* text : {&tidiedHints.applicationName, &tidiedHints.nodeName}) {
        const auto name = withoutBridge(*text);
        if (!name.empty() && !KnownApps::instance().isGenericName(name)) {
            return std::string(name);
        }
    }
    return {};
}

} // namespace fadewell

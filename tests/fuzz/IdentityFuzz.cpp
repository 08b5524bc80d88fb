// What other programs say of themselves: desktop entries, names, command lines, units, properties.

#include "platform/linux/Base64.h"
#include "platform/linux/LogText.h"
#include "platform/linux/Utf8.h"
#include "platform/linux/desktop/SwayFrontWindow.h"
#include "platform/linux/identity/ClientName.h"
#include "platform/linux/identity/DesktopEntry.h"
#include "platform/linux/identity/ProgramName.h"
#include "platform/linux/identity/UnitName.h"
#include "platform/linux/pipewire/GraphObjects.h"
#include "platform/linux/pipewire/StreamRules.h"
#include "platform/linux/pipewire/TransportRules.h"
#include "tests/fuzz/Fuzz.h"

#include <algorithm>

namespace {

using namespace fadewell;
using fuzz::require;

bool isPlain(const std::string& text)
{
    return isValidUtf8(text) && std::none_of(text.begin(), text.end(), [](char character) {
               return static_cast<unsigned char>(character) < 0x20 || character == 0x7f;
           });
}

void nameClient(std::vector<std::string> lines)
{
    lines.resize(7);
    const ClientHints hints{lines[0], lines[1], lines[2], lines[3], lines[4], lines[5], lines[6]};
    const auto tidy = tidied(hints);
    require(isPlain(tidy.applicationName) && tidy.applicationName.size() <= 200, "hints are tidy");
    require(tidied(tidy) == tidy, "tidying a second time changes nothing");
    require(isPlain(clientName(tidy)), "a name is plain");
}

void judgeStream(const std::vector<std::string>& lines)
{
    pipewire::GraphNode node;
    for (const auto& line : lines) {
        const auto equals = std::min(line.find('='), line.size());
        node.props[line.substr(0, equals)] = line.substr(std::min(equals + 1, line.size()));
    }
    static_cast<void>(pipewire::streamKind(node.props, 42));
    static_cast<void>(pipewire::untappableReason(node));
    pipewire::GraphRoute route;
    route.portType = lines.front();
    static_cast<void>(pipewire::transportType(node.props, node.props, &route));
}

void escape(std::string_view text)
{
    require(isPlain(escapedForLog(text)), "a log line is one line");
    require(decodeBase64(encodeBase64(text)) == text, "base64 holds any bytes");
    if (const auto bytes = decodeBase64(text)) {
        require(decodeBase64(encodeBase64(*bytes)) == bytes, "base64 reads what it wrote");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto text = fuzz::textOf(data, size);
    const auto lines = fuzz::linesOf(text);
    static_cast<void>(DesktopEntry::parse(text, {"de_AT", "de"}));
    static_cast<void>(desktopIDsOfUnit(unitOfCgroups(text)));
    static_cast<void>(desktopIDsOfUnit(text));
    static_cast<void>(programOfCommand(lines.front(), lines, lines.back()));
    nameClient(lines);
    judgeStream(lines);
    escape(text);
    static_cast<void>(SwayFrontWindow::focused(text));
    return 0;
}

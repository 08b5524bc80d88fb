#include "platform/linux/identity/IdentityResolver.h"

#include "platform/linux/identity/ClientName.h"
#include "platform/linux/identity/UnitName.h"

#include <utility>

namespace fadewell {
namespace {

using Role = KnownApps::Role;
using Kind = Program::Kind;

constexpr std::size_t maximumAncestors = 32;

ResolvedIdentity identity(std::int32_t owner, std::string bundleID, DesktopIndex::Entry entry)
{
    auto name = entry ? tidied(entry->name) : std::string{};
    if (name.empty()) {
        name = KnownApps::instance().name(bundleID).value_or("");
    }
    return {owner, std::move(bundleID), std::move(entry), std::move(name)};
}

void nameIfNameless(ResolvedIdentity& identity, const std::string& name)
{
    if (identity.name.empty()) {
        identity.name = name;
    }
}

/// A shell with a script is that script; by itself it is where somebody types commands.
Role roleOf(const Program& program, const ProcessFacts& facts)
{
    const auto& known = KnownApps::instance();
    if (program.kind == Kind::script) {
        return Role::none;
    }
    if (program.kind == Kind::commandShell) {
        return Role::wrapper;
    }
    const auto role = known.role(program.name);
    return role == Role::none ? known.role(facts.command) : role;
}

bool answersForNothing(Role role)
{
    return role == Role::terminal || role == Role::shell || role == Role::launcher ||
           role == Role::session;
}

} // namespace

ResolvedIdentity IdentityResolver::resolve(std::int32_t pid, const ClientHints& hints) const
{
    const auto tidy = tidied(hints);
    auto found = find(pid, tidy);
    if (!known_.isGenericName(tidy.iconName)) {
        found.iconName = tidy.iconName;
    }
    return found;
}

ResolvedIdentity IdentityResolver::find(std::int32_t pid, const ClientHints& hints) const
{
    const auto ancestors = pid < firstMadeUpPID ? chain(pid) : Chain{};
    if (ancestors.links.empty()) {
        return byHintsAlone(pid, hints);
    }
    auto found = sandboxed(ancestors, hints);
    if (!found) {
        found = scoped(ancestors);
    }
    if (!found) {
        found = started(ancestors, hints);
    }
    if (!found) {
        return byProgramName(ancestors.links.front(), hints);
    }
    if (found->owner == pid) {
        nameIfNameless(*found, clientName(hints));
    }
    nameIfNameless(*found, tidied(ancestors.links.front().program.name));
    return *found;
}

DesktopIndex::Entry IdentityResolver::installed(std::string_view bundleID) const
{
    if (auto entry = index_.byID(bundleID)) {
        return entry;
    }
    for (const auto& alias : known_.aliases(bundleID)) {
        if (auto entry = index_.byID(alias)) {
            return entry;
        }
    }
    // Some are installed under a file name of their own and known by program or window only.
    for (const auto& alias : known_.aliases(bundleID)) {
        auto entry = index_.byProgram(alias);
        entry = entry ? entry : index_.byWMClass(alias);
        if (entry && matchEntry(entry).bundleID == bundleID) {
            return entry;
        }
    }
    return nullptr;
}

IdentityResolver::Link IdentityResolver::link(ProcessFacts facts) const
{
    auto program = programOfCommand(facts.executable, facts.arguments, facts.command);
    return {std::move(facts), std::move(program)};
}

IdentityResolver::Chain IdentityResolver::chain(std::int32_t pid) const
{
    Chain chain;
    auto facts = processes_.read(pid);
    while (facts && chain.links.size() < maximumAncestors) {
        auto next = link(std::move(*facts));
        if (!chain.links.empty()) {
            // What runs in a unit of its own was set apart on purpose.
            if (next.facts.unit != chain.links.front().facts.unit) {
                break;
            }
            const auto role = roleOf(next.program, next.facts);
            chain.isOnOwnFeet = answersForNothing(role) && role != Role::session;
            if (answersForNothing(role)) {
                break;
            }
        }
        const auto parent = next.facts.parent;
        chain.links.push_back(std::move(next));
        facts = parent > 1 ? processes_.read(parent) : std::nullopt;
    }
    return chain;
}

std::int32_t IdentityResolver::topmost(const Chain& chain,
                                       const std::function<bool(const Link&)>& belongs) const
{
    std::int32_t owner = chain.links.front().facts.pid;
    for (const auto& link : chain.links) {
        const bool holdsOthers = roleOf(link.program, link.facts) == Role::wrapper;
        if (!holdsOthers && belongs(link)) {
            owner = link.facts.pid;
        }
    }
    return owner;
}

IdentityResolver::Match IdentityResolver::matchEntry(const DesktopIndex::Entry& entry) const
{
    for (const auto* name : {&entry->id, &entry->flatpakID, &entry->startupWMClass}) {
        if (auto id = known_.canonicalID(*name)) {
            return {std::move(*id), entry};
        }
    }
    const auto program = DesktopIndex::programOf(*entry).name;
    if (auto id = known_.canonicalID(program)) {
        // An entry for one page or profile: its process is the whole browser.
        const auto whole = index_.byProgram(program);
        return {std::move(*id), whole ? whole : entry};
    }
    return {entry->id, entry};
}

IdentityResolver::Found IdentityResolver::matchID(std::string_view id) const
{
    if (const auto entry = index_.byID(id)) {
        return matchEntry(entry);
    }
    if (auto canonical = known_.canonicalID(id)) {
        auto entry = installed(*canonical);
        return Match{std::move(*canonical), std::move(entry)};
    }
    return std::nullopt;
}

IdentityResolver::Found IdentityResolver::matchName(std::string_view name) const
{
    if (name.empty() || known_.isGenericName(name)) {
        return std::nullopt;
    }
    if (auto match = matchID(name)) {
        return match;
    }
    const auto entry = index_.byWMClass(name);
    return entry ? Found(matchEntry(entry)) : std::nullopt;
}

IdentityResolver::Found IdentityResolver::matchProgram(const Link& link) const
{
    const auto& program = link.program;
    if (program.kind != Kind::binary && program.kind != Kind::script) {
        return std::nullopt;
    }
    for (const auto* name : {&program.name, &program.folderName}) {
        if (const auto entry = name->empty() ? nullptr : index_.byProgram(*name)) {
            return matchEntry(entry);
        }
    }
    if (const auto entry = index_.byFolderOf(program.path)) {
        return matchEntry(entry);
    }
    if (auto canonical = known_.canonicalID(program.name)) {
        auto entry = installed(*canonical);
        return Match{std::move(*canonical), std::move(entry)};
    }
    if (const auto image = processes_.appImage(link.facts.pid)) {
        const auto entry = index_.byProgram(fileName(*image));
        return entry ? Found(matchEntry(entry)) : std::nullopt;
    }
    return std::nullopt;
}

IdentityResolver::Found IdentityResolver::matchLaunch(const Link& link) const
{
    const auto file = processes_.launchedDesktopFile(link.facts.pid);
    if (!file || !file->ends_with(".desktop")) {
        return std::nullopt;
    }
    const std::filesystem::path path(*file);
    auto entry = index_.byID(path.stem().string());
    entry = entry ? entry : index_.read(path);
    return entry ? Found(matchEntry(entry)) : std::nullopt;
}

IdentityResolver::Found IdentityResolver::matchHints(const ClientHints& hints) const
{
    constexpr std::string_view suffix = ".desktop";
    std::string_view id = hints.applicationID;
    id.remove_suffix(id.ends_with(suffix) ? suffix.size() : 0);
    if (auto match = matchName(id)) {
        return match;
    }
    const auto binary = fileName(hints.processBinary);
    const auto program = programOfCommand({}, {binary}, {});
    const bool isTelling = program.kind == Kind::binary && known_.role(binary) == Role::none;
    if (isTelling && !binary.empty() && !known_.isGenericName(binary)) {
        if (const auto entry = index_.byProgram(binary)) {
            return matchEntry(entry);
        }
        if (auto match = matchName(binary)) {
            return match;
        }
    }
    if (auto match = matchName(hints.iconName)) {
        return match;
    }
    const auto entry =
        known_.isGenericName(hints.iconName) ? nullptr : index_.byIcon(hints.iconName);
    return entry ? Found(matchEntry(entry)) : std::nullopt;
}

ResolvedIdentity IdentityResolver::sandboxIdentity(std::int32_t owner,
                                                   const std::string& id,
                                                   const ClientHints& hints) const
{
    auto match = matchID(id).value_or(Match{id, nullptr});
    auto found = identity(owner, std::move(match.bundleID), std::move(match.entry));
    nameIfNameless(found, clientName(hints));
    nameIfNameless(found, id);
    return found;
}

std::optional<ResolvedIdentity> IdentityResolver::sandboxed(const Chain& chain,
                                                            const ClientHints& hints) const
{
    const auto pid = chain.links.front().facts.pid;
    const auto flatpak = processes_.flatpakID(pid);
    const auto id = hints.portalAppID.empty() ? tidied(flatpak.value_or("")) : hints.portalAppID;
    if (id.empty()) {
        return std::nullopt;
    }
    const auto owner = topmost(chain, [&](const Link& link) {
        return flatpak && processes_.flatpakID(link.facts.pid) == flatpak;
    });
    return sandboxIdentity(owner, id, hints);
}

std::optional<ResolvedIdentity> IdentityResolver::scoped(const Chain& chain) const
{
    const auto ids = desktopIDsOfUnit(chain.links.front().facts.unit);
    if (ids.empty() || chain.isOnOwnFeet) {
        return std::nullopt;
    }
    // What an application starts by its desktop entry stays in that application's scope.
    for (const auto& link : chain.links) {
        if (auto match = matchLaunch(link)) {
            const auto owner = link.facts.pid;
            return identity(owner, std::move(match->bundleID), std::move(match->entry));
        }
    }
    for (const auto& id : ids) {
        auto match = matchID(id);
        if (!match) {
            continue;
        }
        const bool holdsOthers = (match->entry && match->entry->isTerminalEmulator) ||
                                 answersForNothing(known_.role(id));
        if (holdsOthers) {
            return std::nullopt;
        }
        const auto owner = topmost(chain, [](const Link&) { return true; });
        return identity(owner, std::move(match->bundleID), std::move(match->entry));
    }
    return std::nullopt;
}

std::optional<ResolvedIdentity> IdentityResolver::started(const Chain& chain,
                                                          const ClientHints& hints) const
{
    const auto matchLink = [this](const Link& link) {
        auto match = matchLaunch(link);
        return match ? match : matchProgram(link);
    };
    for (std::size_t index = 0; index < chain.links.size(); ++index) {
        auto match = matchLink(chain.links[index]);
        if (!match && index == 0) {
            match = matchHints(hints);
        }
        if (!match) {
            continue;
        }
        // A browser runs its own program several times over; the first of them is the browser.
        const auto& found = chain.links[index];
        auto owner = topmost(chain, [&](const Link& link) {
            if (&link <= &found) {
                return true;
            }
            const auto other = matchLink(link);
            return other && other->bundleID == match->bundleID;
        });
        return identity(owner, std::move(match->bundleID), std::move(match->entry));
    }
    return std::nullopt;
}

ResolvedIdentity IdentityResolver::byProgramName(const Link& link, const ClientHints& hints) const
{
    const auto program = tidied(link.program.name);
    if (program.empty()) {
        return byHintsAlone(link.facts.pid, hints);
    }
    ResolvedIdentity found{link.facts.pid, program, nullptr, clientName(hints)};
    nameIfNameless(found, program);
    return found;
}

ResolvedIdentity IdentityResolver::byHintsAlone(std::int32_t pid, const ClientHints& hints) const
{
    if (!hints.portalAppID.empty()) {
        return sandboxIdentity(pid, hints.portalAppID, hints);
    }
    auto name = clientName(hints);
    if (auto match = matchHints(hints)) {
        auto found = identity(pid, std::move(match->bundleID), std::move(match->entry));
        nameIfNameless(found, name);
        return found;
    }
    const auto binary = fileName(hints.processBinary);
    for (const auto& id : {hints.applicationID, binary, name}) {
        if (!id.empty() && !known_.isGenericName(id)) {
            return {pid, id, nullptr, name.empty() ? id : name};
        }
    }
    return {pid, std::nullopt, nullptr, {}};
}

} // namespace fadewell

#pragma once

#include "platform/linux/pipewire/Connection.h"
#include "platform/linux/pipewire/GraphBindings.h"
#include "platform/linux/pipewire/GraphObjects.h"
#include "platform/linux/pipewire/GraphObserver.h"
#include "platform/linux/pipewire/Metadata.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell::pipewire {

/// The mirror of the server's registry: what exists, as it was last told, without asking again.
///
/// Everything here belongs to the connection's lock; pointers and references handed out are good
/// while it is held. Every change wakes Connection::waitFor().
class Graph final : private GraphBindings::Owner {
public:
    explicit Graph(Connection& connection)
        : connection_(connection)
    {}
    ~Graph() override;
    Graph(const Graph&) = delete;
    Graph& operator=(const Graph&) = delete;

    /// Begins to mirror a fresh connection; false when it is none. [locked]
    bool attach();

    /// Forgets everything and tells the observers; before Connection::disconnect(). [locked]
    void detach();

    /// Observers are told in order of their addition and may remove themselves. [locked]
    void addObserver(GraphObserver& observer) { observers_.push_back(&observer); }
    void removeObserver(GraphObserver& observer) { std::erase(observers_, &observer); }

    [[nodiscard]] const std::map<std::uint32_t, GraphClient>& clients() const { return clients_; }
    [[nodiscard]] const std::map<std::uint32_t, GraphNode>& nodes() const { return nodes_; }
    [[nodiscard]] const std::map<std::uint32_t, GraphPort>& ports() const { return ports_; }
    [[nodiscard]] const std::map<std::uint32_t, GraphLink>& links() const { return links_; }
    [[nodiscard]] const std::map<std::uint32_t, GraphDevice>& devices() const { return devices_; }

    /// Null when there is no such object. [locked]
    [[nodiscard]] const GraphClient* client(std::uint32_t id) const;
    [[nodiscard]] const GraphNode* node(std::uint32_t id) const;
    [[nodiscard]] const GraphNode* nodeNamed(std::string_view name) const;
    [[nodiscard]] const GraphNode* nodeWithSerial(std::uint64_t serial) const;
    [[nodiscard]] const GraphLink* link(std::uint32_t id) const;
    [[nodiscard]] const GraphDevice* device(std::uint32_t id) const;

    /// Links from `outputNode` to `inputNode`; SPA_ID_INVALID stands for any. [locked]
    [[nodiscard]] std::vector<const GraphLink*> linksBetween(std::uint32_t outputNode,
                                                             std::uint32_t inputNode) const;

    /// Whether the session manager's metadata is there. [locked]
    [[nodiscard]] bool hasMetadata() const { return metadata_ != nullptr; }
    /// PW_PERM_ bits on the metadata; 0 when it isn't there. [locked]
    [[nodiscard]] std::uint32_t metadataPermissions() const;
    /// The server has let through what it refused before: everything there is counts as writable.
    /// [locked]
    void noteGranted();
    /// Whether the session manager made the link, and not a patch bay. [locked]
    [[nodiscard]] bool isSessionManagers(const GraphLink& link) const;
    /// Asks the server to remove an object. [locked]
    void destroy(std::uint32_t id);
    /// Has the session manager's metadata told anew. [locked]
    void askMetadataAgain();
    /// A value of the session manager's metadata. [locked]
    [[nodiscard]] std::optional<std::string> metadataValue(std::uint32_t subject,
                                                           const std::string& key) const;
    /// A value of the server's settings, such as "clock.rate". [locked]
    [[nodiscard]] std::optional<std::string> settingsValue(const std::string& key) const;
    /// Writes such a value; does nothing while there are no settings. [locked]
    void setSetting(const std::string& key, const std::string& value);
    /// The longest cycle that the settings allow, in frames. [locked]
    [[nodiscard]] std::uint32_t longestCycle() const;

    /// Writes a value, or deletes it when `value` is absent; `type` may be empty. A negative errno
    /// when it can't be sent; a refusal comes later, as writeRefused(). [locked]
    int setMetadata(std::uint32_t subject,
                    const std::string& key,
                    const std::string& type,
                    const std::optional<std::string>& value);

    /// Writes a parameter of a node; status as setMetadata(). [locked]
    int setNodeParam(std::uint32_t node, std::uint32_t param, const spa_pod* value);

    /// Writes what `volume` knows to a node; status as setMetadata(). [locked]
    int setNodeVolume(std::uint32_t node, const NodeVolume& volume);

    /// Writes what `volume` knows to a card's route; kept when the route is saved. [locked]
    int setDeviceRoute(std::uint32_t device, const GraphRoute& route, const NodeVolume& volume);

    /// Shows what was just written to a node until the server's answers have settled; then what
    /// the server says counts again, whatever it is. [locked]
    void assumeVolume(std::uint32_t node, const NodeVolume& volume);

    [[nodiscard]] Connection& connection() const { return connection_; }

private:
    /// Lets a test tell what a server would.
    friend class GraphFeed;

    void clientUpdated(std::uint32_t id) override;
    void nodeUpdated(std::uint32_t id) override;
    void linkUpdated(std::uint32_t id) override;
    void deviceUpdated(std::uint32_t id) override;
    void refused(std::uint32_t id, int result) override;

    [[nodiscard]] NodeVolume shownVolume(const GraphNode& node) const;
    static void onAssumptionsEnd(void* data, std::uint64_t expirations);
    void endAssumptions();

    static const pw_registry_events& registryEvents();
    static void onGlobal(void* data,
                         std::uint32_t id,
                         std::uint32_t permissions,
                         const char* type,
                         std::uint32_t version,
                         const spa_dict* properties);
    static void onGlobalRemove(void* data, std::uint32_t id);
    void add(GraphObject object, std::string_view type);
    void addNode(GraphObject object);
    void addPort(GraphObject object);
    void addLink(GraphObject object);
    void addMetadata(GraphObject object);
    [[nodiscard]] pw_proxy* bindMetadata(std::uint32_t id);
    void keepMetadata(bool isSessions, GraphObject object, pw_proxy* proxy);
    void remove(std::uint32_t id);
    void removeMetadata();
    void clear();
    template <class Notify>
    void tellAll(Notify notify)
    {
        const auto told = observers_;
        for (GraphObserver* const observer : told) {
            if (std::find(observers_.begin(), observers_.end(), observer) != observers_.end()) {
                notify(*observer);
            }
        }
        connection_.signal();
    }

    Connection& connection_;
    pw_registry* registry_ = nullptr;
    spa_hook registryHook_ = {};
    std::vector<GraphObserver*> observers_;
    std::map<std::uint32_t, GraphClient> clients_;
    std::map<std::uint32_t, GraphNode> nodes_;
    std::map<std::uint32_t, GraphPort> ports_;
    std::map<std::uint32_t, GraphLink> links_;
    std::map<std::uint32_t, GraphDevice> devices_;
    GraphBindings bindings_;
    std::unique_ptr<Metadata> metadata_;
    std::unique_ptr<Metadata> settings_;
    std::map<std::uint32_t, NodeVolume> assumed_; ///< written and not settled, by node
    spa_source* assumptionsEnd_ = nullptr;
};

} // namespace fadewell::pipewire

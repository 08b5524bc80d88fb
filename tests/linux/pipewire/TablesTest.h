#pragma once

#include "base/VirtualTime.h"
#include "platform/linux/pipewire/DeviceTable.h"
#include "platform/linux/pipewire/ProcessTable.h"
#include "tests/linux/pipewire/GraphFeed.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <vector>

namespace fadewell::pipewire {

/// Answers with the program's name, and remembers who was forgotten.
class NamedIdentity final : public ProcessIdentity {
public:
    std::optional<std::string> bundleID(std::int32_t /*pid*/, const ClientHints& hints) override
    {
        return hints.processBinary.empty() ? std::nullopt : std::optional(hints.processBinary);
    }
    std::optional<std::string> peekBundleID(std::int32_t pid, const ClientHints& hints) override
    {
        return bundleID(pid, hints);
    }
    void forget(std::int32_t pid) override { forgotten.push_back(pid); }
    bool isRunning(std::int32_t pid) const override { return pid != ended; }

    std::int32_t ended = 0;
    std::vector<std::int32_t> forgotten;
};

/// The tables over a graph that is told what there is.
class TablesTest : public testing::Test {
protected:
    TablesTest()
        : lock_(*connection_)
    {}

    static std::unique_ptr<Connection> open()
    {
        std::string error;
        auto connection = Connection::open({}, error);
        EXPECT_NE(connection, nullptr) << error;
        return connection;
    }

    /// Counts what arrives for a property.
    void listen(AudioObjectID object, const char* selector)
    {
        const AudioObjectPropertyAddress address{
            fourCharCode(selector), kAudioObjectPropertyScopeWildcard, elementWildcard};
        static_cast<void>(
            listeners.add(object, address, queue, [this, selector] { heard += selector; }));
    }
    /// Lets all of the frozen time pass.
    void thaw()
    {
        time->advance(FrozenTime::duration);
        frozen.tick();
    }
    std::string takeHeard()
    {
        time->run();
        return std::exchange(heard, "");
    }

    template <class Table>
    static std::uint32_t number(const Table& table,
                                AudioObjectID object,
                                const char* selector,
                                AudioObjectPropertyScope scope = kAudioObjectPropertyScopeGlobal)
    {
        std::uint32_t value = 0xDEADBEEF;
        const auto bytes = table.value(object, {fourCharCode(selector), scope, 0});
        EXPECT_TRUE(bytes && readBytes(*bytes, value)) << selector;
        return value;
    }
    template <class Table>
    static std::vector<AudioObjectID> list(const Table& table,
                                           AudioObjectID object,
                                           const char* selector,
                                           AudioObjectPropertyScope scope)
    {
        const auto bytes =
            table.value(object, {fourCharCode(selector), scope, 0}).value_or(PropertyBytes{});
        std::vector<AudioObjectID> objects(bytes.size() / sizeof(AudioObjectID));
        std::copy(bytes.begin(), bytes.end(), std::as_writable_bytes(std::span(objects)).begin());
        return objects;
    }

    void sinkNode(std::uint32_t id, const char* name)
    {
        feed.node(id, {{"media.class", "Audio/Sink"}, {"node.name", name}});
    }

    std::unique_ptr<Connection> connection_ = open();
    Connection::Lock lock_;
    std::shared_ptr<VirtualTime> time = VirtualTime::create();
    std::shared_ptr<SerialQueue> queue = time->makeQueue();
    std::string heard;
    ListenerTable listeners;
    ObjectIDs ids;
    Graph graph{*connection_};
    GraphFeed feed{graph};
    FrozenTime frozen{*connection_, time};
    DeviceTable devices{graph, ids, listeners, frozen};
    std::shared_ptr<NamedIdentity> identity = std::make_shared<NamedIdentity>();
    ProcessTable processes{graph, ids, listeners, devices, frozen, identity};
};

} // namespace fadewell::pipewire

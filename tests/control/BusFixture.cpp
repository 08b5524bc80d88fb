#include "tests/control/BusFixture.h"

#include <QDBusPendingCall>
#include <QEventLoop>
#include <QTimer>

namespace fadewell {

AppRowState BusFixture::row(const char* id, const char* name, bool isPlaying)
{
    AppRowState row;
    row.id = id;
    row.name = name;
    row.isPlaying = isPlaying;
    return row;
}

void BusFixture::SetUp()
{
    ASSERT_FALSE(address.isEmpty());

    workspace->installed[firefox] = {"/apps/firefox", "Firefox", {}};
    MixerModel::Services services; // No engine: the test shows what it likes.
    services.mainQueue = queue;
    services.workspace = workspace;
    services.defaults = defaults;
    services.store = std::make_shared<AppSettingsStore>(defaults);
    model = MixerModel::create(std::move(services));
    model->apps.set({row(firefox, "Firefox", true), row("mpv", "mpv")});
    model->outputDevices.set({{"alsa:usb", 5, "Headset", OutputDevice::Kind::headphones},
                              {"alsa:pci", 6, "Speakers", OutputDevice::Kind::builtInSpeakers}});
    model->defaultOutputUID.set("alsa:pci");
    model->microphone.set({"Mic", 0.5, false, true});

    auto connection = connect("service");
    service = std::make_unique<MixerService>(
        connection,
        MixerService::Parts{.model = model,
                            .mainQueue = queue,
                            .workspace = workspace,
                            .tappability = tappability,
                            .isCapturePermitted = [this] { return isPermitted; },
                            .version = "1.2.3",
                            .quit = [this] { ++quits; },
                            .reopened = [this] { ++reopens; },
                            .diagnostics =
                                [this](bool withNames, auto done) {
                                    const char* text = withNames ? "names\n" : "no names\n";
                                    queue->async([=] { done(text); });
                                }});
    ASSERT_TRUE(service->publish());
    ASSERT_EQ(InstanceClaim(connection).claim(), InstanceClaim::Outcome::claimed);
}

void BusFixture::TearDown()
{
    service.reset();
    for (const char* name : {"service", "caller", "second"}) {
        QDBusConnection::disconnectFromBus(name);
    }
}

QDBusConnection BusFixture::connect(const char* name) const
{
    return QDBusConnection::connectToBus(address, name);
}

QDBusMessage BusFixture::call(const QString& member, const QVariantList& arguments)
{
    return callInterface(bus::interface, member, arguments);
}

QDBusMessage BusFixture::callInterface(const QString& interface,
                                       const QString& member,
                                       const QVariantList& arguments)
{
    auto message = QDBusMessage::createMethodCall(bus::service, bus::path, interface, member);
    message.setArguments(arguments);
    const auto pending = connect("caller").asyncCall(message);
    waitUntil([&] { return pending.isFinished(); });
    return pending.reply();
}

void BusFixture::waitUntil(const std::function<bool()>& holds)
{
    while (!holds()) {
        QEventLoop loop; // An answer that nobody listens to wakes no loop: looks again by itself.
        QTimer::singleShot(5, &loop, &QEventLoop::quit);
        loop.exec();
    }
}

} // namespace fadewell

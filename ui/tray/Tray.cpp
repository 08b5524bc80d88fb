#include "ui/tray/Tray.h"

#include "ui/tray/TrayMenu.h"

#include <QDBusConnection>

#include <utility>

namespace fadewell {
namespace {

/// A connection of its own, because some hosts take an icon away only when its connection ends.
constexpr const char* connectionName = "fadewell-tray";

QDBusConnection connectToBus(const QString& address)
{
    return address.isEmpty()
               ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName)
               : QDBusConnection::connectToBus(address, connectionName);
}

} // namespace

Tray::Tray(TrayActions::Parts parts, Options options)
    : parts_(std::move(parts))
    , options_(std::move(options))
    , actions_(parts_)
    , menu_([this](TrayCommand command) { actions_.run(command); })
{
    const auto& model = parts_.model;
    observations_.push_back(model->microphone.observe([this](const auto& /*state*/) { update(); }));
    observations_.push_back(
        model->isCallModeActive.observe([this](const auto& /*isActive*/) { update(); }));
}

Tray::~Tray()
{
    remove();
}

void Tray::setInserted(bool isInserted)
{
    if (std::exchange(isInserted_, isInserted) != isInserted) {
        isInserted ? insert() : remove();
        Q_EMIT presenceChanged();
    }
}

void Tray::setLook(const TrayLook& look)
{
    if (std::exchange(look_, look) != look) {
        update();
    }
}

Tray::Presence Tray::presence() const
{
    if (!isInserted_ || (host_ && host_->state() == TrayHost::State::unknown)) {
        return Presence::unknown;
    }
    const bool isHosted = host_ && host_->state() == TrayHost::State::shown;
    const bool isEmbedded = embedded_ && EmbeddedIcon::isTrayThere();
    return isHosted || isEmbedded ? Presence::shown : Presence::absent;
}

void Tray::insert()
{
    auto connection = connectToBus(options_.busAddress);
    item_ = std::make_unique<StatusNotifierItem>(
        actions_, menu_, TrayIcons::themePath(), options_.host);
    update();
    const auto name = connection.isConnected() ? item_->publish(connection) : QString();
    if (!name.isEmpty()) {
        host_ = std::make_unique<TrayHost>(connection, name);
        connect(host_.get(), &TrayHost::stateChanged, this, &Tray::followHost);
        host_->start();
    } else {
        followHost();
    }
}

void Tray::remove()
{
    embedded_.reset();
    host_.reset();
    item_.reset();
    QDBusConnection::disconnectFromBus(connectionName);
}

void Tray::followHost()
{
    const bool isHosted = host_ && host_->state() == TrayHost::State::shown;
    if (isHosted || !options_.canEmbed) {
        embedded_.reset();
    } else if (!embedded_) {
        embedded_ = std::make_unique<EmbeddedIcon>(actions_);
        auto* menu = &embedded_->menu();
        connect(menu, &QMenu::aboutToShow, this, [this, menu] { Q_EMIT menuTracked(menu, true); });
        connect(menu, &QMenu::aboutToHide, this, [this, menu] { Q_EMIT menuTracked(menu, false); });
        update();
        embedded_->show();
    }
    Q_EMIT presenceChanged();
}

void Tray::update()
{
    if (!item_) {
        return;
    }
    updateEntries();
    const MenuBarIcon icon(*parts_.model);
    if (embedded_) {
        embedded_->setAppearance(icon, look_.ground);
    }
    const auto name = look_.isPainted ? TrayIcons::themeName(icon.symbol) : QString();
    item_->setAppearance({.iconName = name,
                          .pixmaps = TrayIcons::pixmaps(icon.symbol, look_.ground),
                          .label = icon.label});
}

void Tray::updateEntries()
{
    auto entries = trayMenu(*parts_.model, parts_.windows);
    if (embedded_) {
        embedded_->setEntries(entries);
    }
    menu_.setEntries(std::move(entries));
}

} // namespace fadewell

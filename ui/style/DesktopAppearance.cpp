#include "ui/style/DesktopAppearance.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFont>
#include <QGuiApplication>
#include <QMap>
#include <QPalette>

#include <algorithm>
#include <array>

namespace fadewell {
namespace {

const auto portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const auto portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const auto settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");

const auto commonGroup = QStringLiteral("org.freedesktop.appearance");
const auto gnomeGroup = QStringLiteral("org.gnome.desktop.interface");
const auto kdeGroup = QStringLiteral("org.kde.kdeglobals.KDE");

using Groups = QMap<QString, QVariantMap>;

/// Portals wrap values once or twice, depending on the method.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

/// Three numbers from 0 to 1; anything outside means that there is no accent.
std::optional<QColor> color(const QVariant& value)
{
    if (!value.canConvert<QDBusArgument>()) {
        return std::nullopt;
    }
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(ddd)")) {
        return std::nullopt;
    }
    std::array<double, 3> parts{};
    argument.beginStructure();
    argument >> parts[0] >> parts[1] >> parts[2];
    argument.endStructure();
    const auto isPart = [](double part) {
        return part >= 0 && part <= 1;
    };
    return std::ranges::all_of(parts, isPart)
               ? std::optional(QColor::fromRgbF(static_cast<float>(parts[0]),
                                                static_cast<float>(parts[1]),
                                                static_cast<float>(parts[2])))
               : std::nullopt;
}

/// On X11 the toolkit already scales by the resolution into which desktops put their text size.
bool platformScalesText()
{
    return QGuiApplication::platformName() != QLatin1String("wayland");
}

double fontScale()
{
    constexpr double ordinaryPoints = 10;
    return std::clamp(QGuiApplication::font().pointSizeF() / ordinaryPoints, 1.0, 3.0);
}

} // namespace

Appearance
withSetting(Appearance appearance, const QString& group, const QString& key, const QVariant& value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (group == commonGroup && key == QLatin1String("color-scheme") && isNumber) {
        appearance.isDark = number == 1;
    } else if (group == commonGroup && key == QLatin1String("contrast") && isNumber) {
        appearance.isHighContrast = number == 1;
    } else if (group == commonGroup && key == QLatin1String("accent-color")) {
        appearance.accent = color(value);
    } else if (group == gnomeGroup && key == QLatin1String("enable-animations")) {
        appearance.reduceMotion = !value.toBool();
    } else if (group == kdeGroup && key == QLatin1String("AnimationDurationFactor") && isNumber) {
        appearance.reduceMotion = number == 0;
    } else if (group == gnomeGroup && key == QLatin1String("text-scaling-factor") && isNumber) {
        appearance.textScale = std::clamp(number, 0.5, 3.0);
    } else if (group == gnomeGroup && key == QLatin1String("icon-theme")) {
        appearance.iconTheme = value.toString();
    }
    return appearance;
}

DesktopAppearance::DesktopAppearance(QObject* parent)
    : QObject(parent)
{
    appearance_.isDark = QGuiApplication::palette().window().color().lightness() < 128;
    appearance_.textScale = fontScale();
    auto bus = QDBusConnection::sessionBus();
    // Without a bus there is no portal, and the palette stands.
    if (bus.connect(portalService,
                    portalPath,
                    settingsInterface,
                    QStringLiteral("SettingChanged"),
                    this,
                    SLOT(settingChanged(QDBusMessage))))
    {
        readAll();
    }
}

void DesktopAppearance::readAll()
{
    qDBusRegisterMetaType<Groups>();
    auto call = QDBusMessage::createMethodCall(
        portalService, portalPath, settingsInterface, QStringLiteral("ReadAll"));
    call << QStringList{commonGroup, gnomeGroup, kdeGroup};
    auto* watcher =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<Groups> reply = *watcher;
        if (reply.isError()) {
            return; // No portal: the palette stands.
        }
        const auto groups = reply.value();
        for (auto group = groups.begin(); group != groups.end(); ++group) {
            for (auto entry = group->begin(); entry != group->end(); ++entry) {
                apply(group.key(), entry.key(), entry.value());
            }
        }
    });
}

void DesktopAppearance::settingChanged(const QDBusMessage& message)
{
    const auto arguments = message.arguments();
    if (arguments.size() == 3) {
        apply(arguments[0].toString(), arguments[1].toString(), arguments[2]);
    }
}

void DesktopAppearance::apply(const QString& group, const QString& key, const QVariant& value)
{
    if (platformScalesText() && key == QLatin1String("text-scaling-factor")) {
        return;
    }
    publish(withSetting(appearance_, group, key, unwrapped(value)));
}

void DesktopAppearance::publish(const Appearance& appearance)
{
    if (appearance != appearance_) {
        appearance_ = appearance;
        emit changed();
    }
}

} // namespace fadewell

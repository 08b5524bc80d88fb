#include "ui/forms/PlatformTexts.h"

namespace fadewell {

PlatformTexts::System PlatformTexts::current()
{
#ifdef Q_OS_MACOS
    return System::mac;
#else
    return System::freeDesktop;
#endif
}

PlatformTexts* PlatformTexts::create(QQmlEngine* /*engine*/, QJSEngine* /*scriptEngine*/)
{
    return new PlatformTexts; // The engine takes it over.
}

QString PlatformTexts::text(const Entry& entry) const
{
    return tr(system_ == System::mac ? entry.mac : entry.freeDesktop);
}

QString PlatformTexts::showIcon() const
{
    return text({QT_TR_NOOP("Show in Menu Bar"), QT_TR_NOOP("Show in System Tray")});
}

QString PlatformTexts::allowLogin() const
{
    return text({QT_TR_NOOP("Allow Fadewell under Login Items in System Settings."),
                 QT_TR_NOOP("Allow Fadewell under Autostart in System Settings.")});
}

QString PlatformTexts::whyAudio() const
{
    return text({QT_TR_NOOP("Needed to change the volume of apps. Sound is processed on your Mac "
                            "and is never saved or sent."),
                 QT_TR_NOOP("Needed to change the volume of apps. Sound is processed on your "
                            "computer and is never saved or sent.")});
}

QString PlatformTexts::callMode() const
{
    return text({QT_TR_NOOP("Call mode turns on by itself when a call app uses the microphone. You "
                            "can always turn it on or off in the menu bar."),
                 QT_TR_NOOP("Call mode turns on by itself when a call app uses the microphone. You "
                            "can always turn it on or off in the mixer.")});
}

QString PlatformTexts::onboardingWhyAudio() const
{
    return text({QT_TR_NOOP("To change an app’s volume, Fadewell needs the sound it plays. macOS "
                            "calls this System Audio Recording. Sound is processed on your Mac and "
                            "is never saved or sent."),
                 QT_TR_NOOP("To change an app’s volume, Fadewell needs the sound it plays. The "
                            "sound system, PipeWire, has to allow this. Sound is processed on your "
                            "computer and is never saved or sent.")});
}

QString PlatformTexts::onboardingAsking() const
{
    return text({QT_TR_NOOP("Answer the question from macOS."),
                 QT_TR_NOOP("Waiting for the sound system to allow it.")});
}

QString PlatformTexts::onboardingLater() const
{
    return text(
        {QT_TR_NOOP("You can allow it later in System Settings ▸ Privacy & Security ▸ "
                    "Screen & System Audio Recording."),
         QT_TR_NOOP("You can allow it later: Settings ▸ General ▸ Permissions tells how.")});
}

QString PlatformTexts::iconPlace() const
{
    return text({QT_TR_NOOP("Fadewell is in the menu bar. Click %1 to change the volume of each "
                            "app. You can set keyboard shortcuts in Settings."),
                 QT_TR_NOOP("Fadewell is in the system tray. Click %1 to change the volume of each "
                            "app. You can set keyboard shortcuts in Settings.")});
}

} // namespace fadewell

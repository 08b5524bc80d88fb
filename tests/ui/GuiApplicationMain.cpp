#include <QGuiApplication>
#include <QLocale>

#include <cstdlib>
#include <gtest/gtest.h>

// Without a screen and in English, whatever the machine has.
int main(int argc, char** argv)
{
    setenv("LC_ALL", "en_US.UTF-8", 1);
    unsetenv("LANGUAGE");
    unsetenv("DBUS_SESSION_BUS_ADDRESS"); // Looks are the tests' own.
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("QT_QUICK_BACKEND", "software", 1);
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    return RUN_ALL_TESTS();
}

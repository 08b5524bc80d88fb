#include <QCoreApplication>

#include <gtest/gtest.h>

// What is under test needs the event loop's application object.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

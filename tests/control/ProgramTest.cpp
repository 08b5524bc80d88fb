#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <functional>
#include <gmock/gmock.h>
#include <memory>
#include <vector>

namespace fadewell {
namespace {

using testing::HasSubstr;

/// fadewell itself in a session of its own: folders, bus and, where a test wants it, sound.
class ProgramTest : public testing::Test {
protected:
    using Process = std::unique_ptr<QProcess>;

    void SetUp() override
    {
        ASSERT_TRUE(folder.isValid());
        environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", folder.path());
        for (const char* name : {"RUNTIME_DIR", "CONFIG_HOME", "STATE_HOME", "DATA_HOME"}) {
            const QString path = folder.filePath(name);
            ASSERT_TRUE(QDir().mkdir(path));
            QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
            environment.insert(QString("XDG_") + name, path);
        }
        const QString socket = folder.filePath("bus");
        environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + socket);
        bus = start("dbus-daemon", {"--session", "--nofork", "--address=unix:path=" + socket});
        ASSERT_TRUE(waitUntil([&] { return QFile::exists(socket); }));
    }

    void TearDown() override
    {
        for (auto* process : {&sessionManager, &sound, &bus}) {
            if (*process) {
                (*process)->kill();
                (*process)->waitForFinished();
            }
        }
    }

    void startSound()
    {
        sound = start("pipewire", {});
        ASSERT_TRUE(
            waitUntil([&] { return QFile::exists(folder.filePath("RUNTIME_DIR/pipewire-0")); }));
    }
    void startSession()
    {
        startSound();
        sessionManager = start("wireplumber", {});
    }

    Process start(const QString& program, const QStringList& arguments) const
    {
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(environment);
        process->start(program, arguments);
        return process;
    }
    Process startFadewell() const { return start(FADEWELL, {"--headless"}); }

    /// Runs fadewellctl until it reaches a running instance.
    [[nodiscard]] bool waitUntilReachable() const
    {
        return waitUntil([&] { return finish(*start(FADEWELLCTL, {"outputs"})) == 0; });
    }

    static int finish(QProcess& process)
    {
        const bool isOver = process.state() == QProcess::NotRunning;
        EXPECT_TRUE(isOver || process.waitForFinished(30000));
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    static bool waitUntil(const std::function<bool()>& holds)
    {
        constexpr int mostTurns = 500; // of 20 ms
        for (int turn = 0; turn < mostTurns && !holds(); ++turn) {
            QEventLoop loop;
            QTimer::singleShot(20, &loop, &QEventLoop::quit);
            loop.exec();
        }
        return holds();
    }

    QTemporaryDir folder;
    QProcessEnvironment environment;
    Process bus;
    Process sound;
    Process sessionManager;
};

TEST_F(ProgramTest, SaysWhyItCanNotStart)
{
    auto without = startFadewell();
    EXPECT_EQ(finish(*without), 1);
    EXPECT_THAT(without->readAllStandardError().toStdString(), HasSubstr("No PipeWire server"));
    startSound();
    auto unmanaged = startFadewell();
    EXPECT_EQ(finish(*unmanaged), 1);
    EXPECT_THAT(unmanaged->readAllStandardError().toStdString(), HasSubstr("WirePlumber"));
}

TEST_F(ProgramTest, EndsCleanlyOnEverySignalAndOnQuit)
{
    startSession();
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, 0}) {
        auto program = startFadewell();
        ASSERT_TRUE(waitUntilReachable());
        if (signal == 0) {
            EXPECT_EQ(finish(*start(FADEWELLCTL, {"quit"})), 0);
        } else {
            kill(static_cast<pid_t>(program->processId()), signal);
        }
        EXPECT_EQ(finish(*program), 0) << signal;
        EXPECT_EQ(finish(*start(FADEWELLCTL, {"outputs"})), 3);
    }
}

TEST_F(ProgramTest, RunsOnceHoweverOftenItIsStarted)
{
    startSession();
    for (const bool hasBus : {true, false}) {
        if (!hasBus) {
            environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
        }
        std::vector<Process> programs;
        for (int count = 0; count < 6; ++count) {
            programs.push_back(startFadewell());
        }
        const auto running = [&] {
            return std::count_if(programs.begin(), programs.end(), [](const auto& program) {
                return program->state() != QProcess::NotRunning;
            });
        };
        EXPECT_TRUE(waitUntil([&] { return running() == 1; })) << running();
        for (const auto& program : programs) {
            if (program->state() != QProcess::NotRunning) {
                program->terminate();
            } else {
                EXPECT_THAT(program->readAllStandardOutput().toStdString(),
                            HasSubstr("running already"));
            }
            EXPECT_EQ(finish(*program), 0);
        }
    }
}

} // namespace
} // namespace fadewell

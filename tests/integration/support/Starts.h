#pragma once

#include "tests/integration/support/ChildProcess.h"
#include "tests/integration/support/CountedSound.h"
#include "tests/integration/support/Recorder.h"
#include "tests/integration/support/StartTally.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace fadewell::integration {

/// The ways in which a sound begins.
enum class StartKind {
    start,   ///< a program is started, which plays a quarter of a second
    restart, ///< the same, less than half a second after it was ended in the middle of playing
    resume,  ///< a paused program goes on
    row      ///< one program opens many streams one after the other, as browsers do
};

/// The names of the programs that can begin so: players, and the tests' own client.
[[nodiscard]] std::vector<std::string> programsOf(StartKind kind);

/// Makes programs begin to play in a session, and judges by content what its default output played.
/// One that is silent for four seconds counts as not heard. What the recorder lost is tried again,
/// a few times.
class Starts {
public:
    /// `rest` passes before every start of a process.
    explicit Starts(std::filesystem::path folder, std::chrono::milliseconds rest = {});

    /// Sets the volume that Fadewell remembers for the program's app, in percent. Throws
    /// std::runtime_error when it isn't heard at it in the end.
    void remember(const std::string& program, int volume);

    /// Begins `count` times (a row is done to its end) while the app's remembered volume is the
    /// factor `gain`; 1 without Fadewell.
    [[nodiscard]] StartTally
    measure(StartKind kind, const std::string& program, double gain, std::size_t count);

private:
    enum class Length {
        quarter,
        minute
    };
    [[nodiscard]] ChildProcess
    run(const std::string& program, Length length, const std::string& streams = "1") const;
    [[nodiscard]] const Recorder& recorder();
    /// Waits for sound after a moment of the recording; false when there is none.
    [[nodiscard]] bool awaitSound(std::size_t from) const;
    /// Waits until a long sound is heard at a gain for 50 ms.
    [[nodiscard]] bool awaitVolume(double gain);
    [[nodiscard]] CountedCheck start(const std::string& program, double gain);
    void playAndQuit(const std::string& program);
    [[nodiscard]] CountedCheck
    resume(const ChildProcess& player, const std::string& program, double gain);
    [[nodiscard]] std::vector<CountedCheck>
    resumes(const std::string& program, double gain, std::size_t count);
    [[nodiscard]] std::vector<CountedCheck>
    row(const std::string& program, double gain, std::size_t streams);
    void togglePause(const ChildProcess& player, const std::string& program) const;
    [[nodiscard]] std::filesystem::path file(Length length) const;

    std::filesystem::path folder_;
    std::chrono::milliseconds rest_;
    CountedSound quarter_{12'000};
    CountedSound minute_{60 * 48'000};
    std::unique_ptr<Recorder> recorder_;
};

} // namespace fadewell::integration

#include "tests/integration/support/SoundTest.h"

#include <cmath>

namespace fadewell::integration {

std::unique_ptr<Session> SoundTest::session_;

void SoundTest::SetUpTestSuite()
{
    session_ = std::make_unique<Session>();
    writeTone(tone());
    writeCounter(counter());
}

void SoundTest::TearDownTestSuite()
{
    session_.reset();
}

void SoundTest::SetUp()
{
    speakers_ = std::make_unique<Recorder>(speakers);
    headphones_ = std::make_unique<Recorder>(headphones);
}

std::filesystem::path SoundTest::tone()
{
    return session_->folder() / "tone.wav";
}

std::filesystem::path SoundTest::counter()
{
    return session_->folder() / "counter.wav";
}

CounterCheck checkCounter(const Sound& sound)
{
    CounterCheck check;
    for (std::size_t i = 1; i < sound.frames(); ++i) {
        if (sound.right[i] == 0 && sound.left[i] == 0) {
            check.wrong += check.frames > 0 ? 1 : 0; // a hole, or the player's end
            continue;
        }
        ++check.frames;
        const bool isFirst = sound.right[i - 1] == 0;
        const bool follows = sound.left[i] == sound.left[i - 1] + std::ldexp(1.0F, -23);
        check.wrong += (sound.right[i] == 0.25F && (isFirst || follows)) ? 0 : 1;
    }
    return check;
}

} // namespace fadewell::integration

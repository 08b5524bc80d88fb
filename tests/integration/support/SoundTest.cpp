#include "tests/integration/support/SoundTest.h"

namespace fadewell::integration {

std::unique_ptr<Session> SoundTest::session_;
const CountedSound SoundTest::counted(60 * 48'000);

void SoundTest::SetUpTestSuite()
{
    session_ = std::make_unique<Session>();
    writeTone(tone());
    counted.write(counter());
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

} // namespace fadewell::integration

// sound_client native|pulse FILE STREAMS|churn|loop|clock|capture: a program that plays a WAV file
// of the tests in STREAMS streams, one after the other, or in a thousand that end at once, or
// without an end, from its beginning or by the output's clock; or that listens to the microphone.

#include "tests/integration/client/Client.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>

int main(int argc, char** argv)
try {
    using namespace fadewell::integration;
    if (argc != 4) {
        std::fputs("usage: sound_client native|pulse FILE STREAMS|churn|loop|clock|capture\n",
                   stderr);
        return 2;
    }
    const SoundFile file(argv[2]);
    const std::string_view what = argv[3];
    const auto mode = what == "loop"      ? Playing::Mode::loop
                      : what == "churn"   ? Playing::Mode::churn
                      : what == "clock"   ? Playing::Mode::clock
                      : what == "capture" ? Playing::Mode::capture
                                          : Playing::Mode::streams;
    const Playing playing{file, mode, what == "churn" ? 1000 : std::atoi(argv[3])};
    return std::string_view(argv[1]) == "pulse" ? playOverPulse(playing) : playNatively(playing);
} catch (const std::exception& error) {
    std::fprintf(stderr, "sound_client: %s\n", error.what());
    return 1;
}

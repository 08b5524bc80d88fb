#pragma once

#include "platform/simulated/BufferList.h"
#include "platform/simulated/ObjectTable.h"
#include "platform/simulated/SimulatedProcedure.h"
#include "platform/simulated/StereoBlock.h"

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace fadewell {

/// What each process plays in one cycle, by process object.
using PlayedSound = std::map<AudioObjectID, StereoBlock>;
/// What is heard in one cycle, by output device.
using HeardSound = std::map<AudioObjectID, StereoBlock>;

/// One cycle of the sound system: who is heard directly, and which procedures run on which buffers.
/// Not synchronised, except that `run` of a planned call needs nothing else.
class SoundFlow final {
public:
    using Procedures = std::map<IOProcID, std::shared_ptr<SimulatedProcedure>>;

    struct PlannedCall {
        std::shared_ptr<SimulatedProcedure> procedure;
        AudioObjectID output = 0; ///< the real device
        BufferList inputBuffers;
        BufferList outputBuffers;

        void run();
    };

    SoundFlow(ObjectTable& objects,
              const Procedures& procedures,
              bool isCapturePermitted,
              bool isInterleaved)
        : objects_(objects)
        , procedures_(procedures)
        , isCapturePermitted_(isCapturePermitted)
        , isInterleaved_(isInterleaved)
    {}

    /// The processes' own path to their devices, as far as no tap mutes it. A process that plays to
    /// several devices is heard at each.
    [[nodiscard]] HeardSound directSound(const PlayedSound& played, std::uint32_t frames);

    /// A call for each procedure that is due.
    [[nodiscard]] std::vector<PlannedCall> plan(const PlayedSound& played, std::uint32_t frames);

    /// Adds what a procedure wrote to what is heard.
    static void collect(PlannedCall& call, std::uint32_t frames, HeardSound& heard);

private:
    [[nodiscard]] bool isMuted(AudioObjectID process);
    [[nodiscard]] bool isRead(const SimulatedTap& tap);
    [[nodiscard]] StereoBlock
    tapped(const SimulatedTap& tap, const PlayedSound& played, std::uint32_t frames);
    [[nodiscard]] AudioObjectID realDevice(AudioObjectID device);
    [[nodiscard]] BufferList
    inputFor(AudioObjectID device, const PlayedSound& played, std::uint32_t frames);
    void addChannels(BufferList& buffers, std::uint32_t channels, std::uint32_t frames) const;

    ObjectTable& objects_;
    const Procedures& procedures_;
    bool isCapturePermitted_;
    bool isInterleaved_;
};

} // namespace fadewell

#include "platform/linux/pipewire/taps/ConverterWaker.h"

#include <algorithm>

namespace fadewell::pipewire {
namespace {

// Some cycles of any usual length; shorter again too soon, and another player is caught.
constexpr double tickSeconds = 0.150;
// Three seconds: an output that is believed to be lost is replaced after two.
constexpr int mostTicks = 20;
constexpr int mostLongCycles = 3;

} // namespace

void ConverterWaker::watch()
{
    ticks_ = mostTicks;
    longCycles_ = mostLongCycles;
    timer_.setInterval(tickSeconds);
}

void ConverterWaker::tick()
{
    if (std::exchange(isLong_, false)) {
        forEach_([](TapStreams& streams) { streams.forceCycle(0); });
    } else if (longCycles_ > 0) {
        const auto before = std::exchange(starved_, {});
        forEach_([&](TapStreams& streams) {
            if (!streams.isStarved() || !isFed(streams)) {
                return;
            }
            starved_.insert(&streams);
            if (before.contains(&streams)) {
                keeper_.letGo();
                streams.forceCycle(graph_.longestCycle());
                isLong_ = true;
            }
        });
        longCycles_ -= isLong_ ? 1 : 0;
    }
    if (--ticks_ <= 0 && !isLong_) {
        timer_.setInterval(0);
    }
}

/// Whether a player runs that should be heard.
bool ConverterWaker::isFed(const TapStreams& streams) const
{
    const auto links = graph_.linksBetween(SPA_ID_INVALID, streams.captureNode());
    return std::any_of(links.begin(), links.end(), [this](const GraphLink* link) {
        const auto* player = graph_.node(link->outputNode);
        return link->state == PW_LINK_STATE_ACTIVE && player &&
               player->state == PW_NODE_STATE_RUNNING;
    });
}

} // namespace fadewell::pipewire

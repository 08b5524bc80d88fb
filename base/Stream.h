#pragma once

#include "base/SerialQueue.h"
#include "base/Subscription.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace fadewell {

/// Values from one producer to one consumer; only the newest undelivered `keepNewest` are kept.
///
/// Values sent before the consumer comes wait for it. A burst wakes the consumer once. Nothing is
/// delivered after `finish()`, nor after the subscription died. [any thread]
template <class T>
class Stream final {
public:
    explicit Stream(std::size_t keepNewest)
        : state_(std::make_shared<State>(keepNewest))
    {}

    void send(T value)
    {
        const std::lock_guard lock(state_->mutex);
        if (state_->isFinished) {
            return;
        }
        if (state_->buffer.size() == state_->keepNewest) {
            state_->buffer.pop_front();
        }
        state_->buffer.push_back(std::move(value));
        State::wake(state_);
    }

    void finish()
    {
        const std::lock_guard lock(state_->mutex);
        state_->isFinished = true;
        state_->buffer.clear();
    }

    /// Delivers each value on `queue`. A later consumer replaces an earlier one.
    [[nodiscard]] Subscription consume(std::shared_ptr<SerialQueue> queue,
                                       std::function<void(T)> handler)
    {
        auto consumer = std::make_shared<Consumer>(Consumer{std::move(queue), std::move(handler)});
        const std::lock_guard lock(state_->mutex);
        state_->consumer = consumer;
        state_->isAwake = false;
        if (!state_->buffer.empty()) {
            State::wake(state_);
        }
        return Subscription([state = state_, consumer] {
            const std::lock_guard inner(state->mutex);
            if (state->consumer == consumer) {
                state->consumer = nullptr;
            }
        });
    }

private:
    struct Consumer {
        std::shared_ptr<SerialQueue> queue;
        std::function<void(T)> handler;
    };

    struct State {
        explicit State(std::size_t keep)
            : keepNewest(keep)
        {}

        // Called with the mutex held.
        static void wake(const std::shared_ptr<State>& state)
        {
            if (!state->consumer || state->isAwake) {
                return;
            }
            state->isAwake = true;
            state->consumer->queue->async(
                [state, consumer = state->consumer] { drain(*state, consumer); });
        }

        static void drain(State& state, const std::shared_ptr<Consumer>& consumer)
        {
            while (true) {
                std::unique_lock lock(state.mutex);
                if (state.consumer != consumer) {
                    return;
                }
                if (state.buffer.empty()) {
                    state.isAwake = false;
                    return;
                }
                T value = std::move(state.buffer.front());
                state.buffer.pop_front();
                lock.unlock();
                consumer->handler(std::move(value));
            }
        }

        const std::size_t keepNewest;
        std::mutex mutex;
        std::deque<T> buffer;
        std::shared_ptr<Consumer> consumer;
        bool isAwake = false;
        bool isFinished = false;
    };

    std::shared_ptr<State> state_;
};

} // namespace fadewell

#pragma once

// Names for clang's thread-safety analysis; empty elsewhere. A field that belongs to a queue is
// CONFINED_TO it, a private function that runs on it is ON_QUEUE, and SerialQueue::assertCurrent()
// tells the analysis (and a running program) that the caller is there.
#if defined(__clang__)
#define FADEWELL_THREAD_ATTRIBUTE(x) __attribute__((x))
#else
#define FADEWELL_THREAD_ATTRIBUTE(x)
#endif

#define CAPABILITY(name) FADEWELL_THREAD_ATTRIBUTE(capability(name))
#define ASSERTS_CAPABILITY(x) FADEWELL_THREAD_ATTRIBUTE(assert_capability(x))
#define CONFINED_TO(queue) FADEWELL_THREAD_ATTRIBUTE(guarded_by(queue))
#define ON_QUEUE(queue) FADEWELL_THREAD_ATTRIBUTE(requires_capability(queue))

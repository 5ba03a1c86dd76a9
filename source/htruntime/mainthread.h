#pragma once

#include <functional>

#include "htruntime/hstring.h"

namespace ht {

// Calls for the main thread, which the host runs when it pleases:
//
//   HtSetMainThreadWake([] { PostWakeUp(); });       // optional: tells the host's loop that there is work
//   HtQueueMainThread([=] { document->Repaint(); }); // on any thread
//   HtPumpMainThread();                              // in the host's loop

/// Makes the calling thread the main one. Until then it is the thread in which the program started.
void HtSetMainThread();
bool HtIsMainThread();

/// Puts a call behind those that wait, on any thread.
void HtQueueMainThread(std::function<void()> call);
/// Called behind every HtQueueMainThread, on its thread; empty for nothing.
void HtSetMainThreadWake(std::function<void()> wake);
/// Runs the calls that wait now, in their order, and returns how many; those that they queue wait for the next
/// time. An exception of a call passes to the caller, and the calls behind it stay queued. Raises EAssertionFailed
/// "Not on the main thread" elsewhere.
int HtPumpMainThread();

/// The name of the calling thread as debuggers show it; the system keeps 15 bytes of UTF-8.
void HtSetThreadName(std::u16string_view name);

}  // namespace ht

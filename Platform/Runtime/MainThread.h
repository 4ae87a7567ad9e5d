#pragma once

#include <cstdint>
#include <functional>

#include "Platform/Runtime/Export.h"

/// Steps that other threads hand over to the main thread.
///
///     Synchronize([&] { label.SetCaption(u"done"); });            // on a thread: waits until the main thread has run it
///
///     while (!isDone) CheckSynchronize(1000);                     // on the main thread of a console program
///
/// The main thread runs the steps in the order in which they were handed over. It is the thread that loaded the library,
/// unless SetMainThread says otherwise. A program with an event loop does not poll: it has SetWakeMainThread post an
/// event to its loop, whose handler calls CheckSynchronize. TApplication does so for forms.
///
/// At the end of a program: a thread that still waits when main() returns ends with the process, and what it uses
/// here is never destroyed. A program that joins its threads before its end calls EndSynchronize first, so that
/// they do not wait for a main thread that serves no more steps.
///
/// Threads: every function may be called on any thread, unless it says otherwise.
namespace Varnholt {

/// Runs the step on the main thread, waits for it, and passes on what it raises. On the main thread the step runs
/// at once. EInvalidOperation `The main thread serves no more steps` after EndSynchronize; the step has not run
/// then.
VARNHOLT_EXPORT void Synchronize(const std::function<void()>& step);

/// Hands over a step and does not wait, also on the main thread. What it raises is raised by CheckSynchronize. After
/// EndSynchronize the step is dropped.
VARNHOLT_EXPORT void Queue(std::function<void()> step);

/// Runs the steps that have been handed over, and waits for the first at most so many milliseconds; without a limit
/// if `timeout` is below 0. Steps that arrive meanwhile are left for the next call. Returns whether it ran one. A
/// queued step that raises ends the call; the steps after it stay. Only on the main thread, otherwise
/// EInvalidOperation `Steps run on the main thread only`. A step may call it in turn.
VARNHOLT_EXPORT bool CheckSynchronize(std::int32_t timeout = 0);

/// The same for at most one step, for an event loop.
VARNHOLT_EXPORT bool HandleStep(std::int32_t timeout = 0);

/// Ends the service for good: threads that wait get the error of Synchronize, queued steps are dropped. A step that is
/// running is finished.
VARNHOLT_EXPORT void EndSynchronize();

/// Sets what is called after each step that is handed over, on the thread that does so; an empty function for nothing. It
/// must not call the functions of this header; what it raises is ignored. The former one may still be called once
/// by a thread that is just handing over a step.
VARNHOLT_EXPORT void SetWakeMainThread(std::function<void()> wake);

/// Makes the calling thread the main thread. Call it before other threads use these functions.
VARNHOLT_EXPORT void SetMainThread() noexcept;
[[nodiscard]] VARNHOLT_EXPORT bool IsMainThread() noexcept;

}  // namespace Varnholt

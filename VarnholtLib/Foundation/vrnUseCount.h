#pragma once

#include "Platform/Runtime/Export.h"

/// When a module does its work at load and at unload.
///
/// Every module counts its uses, so that a library that is loaded twice starts its modules once, and stops
/// them at the last unload. The count runs downwards: 0 is a module that is not in use, -1 one that was
/// loaded once.
///
///     constexpr TModuleWork kLogWork = {.Initialize = &CreateNullLog, .Finalize = &ReleaseNullLog};
///     TModuleUse use;
///     use.Initialize(kLogWork);   // creates the null log
///     use.Initialize(kLogWork);   // counts
///     use.Finalize(kLogWork);     // counts
///     use.Finalize(kLogWork);     // releases the null log
///
/// Threads: the counts are plain integers; the loader calls on one thread.
namespace Varnholt {

/// One step of a module's start or end. It must not raise: nobody could catch it while the library loads.
using TWorkStep = void (*)() noexcept;

/// What a module does at load and at unload; a step that it does not have is null. The class steps are those
/// of a class of the module that holds state at class level.
struct TModuleWork {
    TWorkStep ConstructClass = nullptr;
    TWorkStep Initialize = nullptr;
    TWorkStep Finalize = nullptr;
    TWorkStep DestructClass = nullptr;
};

/// One use count and its rule.
class VARNHOLT_EXPORT TUseCount {
public:
    /// Decrements the count, and runs the step only if the count was 0 before.
    void Initialize(TWorkStep step) noexcept;
    /// Increments the count, and runs the step only if the count is now 0.
    void Finalize(TWorkStep step) noexcept;

    /// Minus the number of loads that no unload has answered yet.
    [[nodiscard]] int GetCount() const noexcept { return FCount; }

private:
    int FCount = 0;
};

/// The use counts of a module: one of its own and one for its class-level work, which runs immediately before
/// the module's initialise step and immediately after its finalise step.
class VARNHOLT_EXPORT TModuleUse {
public:
    void Initialize(const TModuleWork& work) noexcept;
    void Finalize(const TModuleWork& work) noexcept;

    /// The module's own count.
    [[nodiscard]] int GetCount() const noexcept { return FModule.GetCount(); }

private:
    TUseCount FClass;
    TUseCount FModule;
};

}  // namespace Varnholt

#pragma once

#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

/// What a module keeps from the load of the library to its unload.
///
///     constinit TModuleState<TRegistry> registry;   // in the module's source
///
///     registry.Create();                            // at load
///     if (TRegistry* const loaded = registry.Get()) return loaded->Items();
///     registry.Destroy();                           // at unload
///
/// The loader's steps run before the constructors and after the destructors of an application's static
/// objects. The holder is therefore initialised at compile time and is never destroyed: it can be used at any
/// time. The value lives in the holder itself, without an allocation.
///
/// Threads: no lock. Create and Destroy are called by the thread that loads and unloads the library.
namespace Varnholt {

template <typename T>
class TModuleState {
public:
    constexpr TModuleState() noexcept = default;
    TModuleState(const TModuleState&) = delete;
    TModuleState& operator=(const TModuleState&) = delete;

    /// Constructs the value from the arguments. A former value is destroyed first.
    template <typename... TArguments>
    T& Create(TArguments&&... arguments) {
        static_assert(std::is_trivially_destructible_v<TModuleState>);
        Destroy();
        T* const storage = static_cast<T*>(static_cast<void*>(FStorage));
        FValue = std::construct_at(storage, std::forward<TArguments>(arguments)...);
        return *FValue;
    }

    /// Destroys the value, if there is one. Get returns null from the beginning of its destructor on.
    void Destroy() noexcept {
        if (T* const value = std::exchange(FValue, nullptr)) std::destroy_at(value);
    }

    /// The value; null outside the time from Create to Destroy.
    [[nodiscard]] T* Get() const noexcept { return FValue; }

private:
    T* FValue = nullptr;
    alignas(T) std::byte FStorage[sizeof(T)]{};
};

}  // namespace Varnholt

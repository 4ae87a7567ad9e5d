#pragma once

#include <memory>
#include <utility>

namespace Varnholt {

/// A process-wide object that is created at its first use and never destroyed, so that destructors of static
/// objects, and the unloading of the library after them, can still use it:
///
///     static TImmortal<TTable> table;
///     table->Add(...);
template <typename T>
class TImmortal {
public:
    template <typename... TArgs>
    explicit TImmortal(TArgs&&... args) {
        std::construct_at(&FObject, std::forward<TArgs>(args)...);
    }
    ~TImmortal() {}  // does not destroy the object
    TImmortal(const TImmortal&) = delete;
    TImmortal& operator=(const TImmortal&) = delete;

    [[nodiscard]] T& operator*() noexcept { return FObject; }
    [[nodiscard]] T* operator->() noexcept { return &FObject; }

private:
    union {
        T FObject;
    };
};

}  // namespace Varnholt

#pragma once

#include <cstdint>
#include <initializer_list>

/// Sets over an enumeration with at most 32 values, numbered from 0.
///
///     TEnumSet<TAnchorKind> anchors = {akLeft, akTop};
///     anchors.Include(akRight);
///     if (anchors.Contains(akBottom)) ...
///
/// Threads: a set is a plain value.
namespace Varnholt {

template <typename TValue>
class TEnumSet {
public:
    constexpr TEnumSet() noexcept = default;
    constexpr TEnumSet(std::initializer_list<TValue> values) noexcept {
        for (const TValue value : values) Include(value);
    }

    constexpr void Include(TValue value) noexcept { FBits |= Bit(value); }
    constexpr void Exclude(TValue value) noexcept { FBits &= ~Bit(value); }
    [[nodiscard]] constexpr bool Contains(TValue value) const noexcept { return (FBits & Bit(value)) != 0; }
    [[nodiscard]] constexpr bool IsEmpty() const noexcept { return FBits == 0; }
    constexpr bool operator==(const TEnumSet&) const noexcept = default;

private:
    static constexpr std::uint32_t Bit(TValue value) noexcept { return 1U << static_cast<unsigned>(value); }

    std::uint32_t FBits = 0;
};

}  // namespace Varnholt

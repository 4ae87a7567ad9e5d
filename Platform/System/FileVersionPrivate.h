#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <utility>

#include "Platform/System/FileVersion.h"

namespace Varnholt {

/// Reads single numbers of a file. After the first one that is outside the file, cannot be read or is one too many,
/// it reads nothing more, and every number is 0.
class TNumberReader {
public:
    /// Fills the bytes from an offset inside the file.
    using TRead = std::function<bool(std::uint64_t offset, std::span<std::byte> bytes)>;

    TNumberReader(std::uint64_t size, TRead read) : FSize(size), FRead(std::move(read)) {}

    void SetBigEndian(bool bigEndian) noexcept { FBigEndian = bigEndian; }
    [[nodiscard]] bool IsGood() const noexcept { return FGood; }

    /// The number of 1 to 8 bytes at an offset from the beginning of the file.
    [[nodiscard]] std::uint64_t Number(std::uint64_t offset, std::size_t width);

private:
    std::uint64_t FSize;
    TRead FRead;
    int FReadsLeft = kMaxVersionReads;
    bool FBigEndian = false;
    bool FGood = true;
};

/// Major, minor, release and build.
using TVersionWords = std::array<std::uint16_t, 4>;

/// The version of a Windows file, or nothing if it has none.
[[nodiscard]] std::optional<TVersionWords> ReadPeVersion(TNumberReader& reader);

/// The version of an ELF file, or nothing if it has none.
[[nodiscard]] std::optional<TVersionWords> ReadElfVersion(TNumberReader& reader);

}  // namespace Varnholt

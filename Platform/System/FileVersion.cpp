#include "Platform/System/FileVersion.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <optional>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/System/FileVersionPrivate.h"

namespace Varnholt {
namespace {

/// An open regular file; not open if the path names anything else.
class TRegularFile {
public:
    explicit TRegularFile(const std::string& path) {
        struct stat status = {};
        // Looked at before it is opened: opening a device may have an effect.
        if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return;
        FHandle = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
        if (FHandle < 0) return;
        // The path may name another file by now.
        const bool regular = ::fstat(FHandle, &status) == 0 && S_ISREG(status.st_mode);
        if (regular) FSize = static_cast<std::uint64_t>(status.st_size);
    }
    ~TRegularFile() {
        if (FHandle >= 0) ::close(FHandle);
    }
    TRegularFile(const TRegularFile&) = delete;
    TRegularFile& operator=(const TRegularFile&) = delete;

    [[nodiscard]] std::uint64_t GetSize() const noexcept { return FSize; }

    [[nodiscard]] bool Read(std::uint64_t offset, std::span<std::byte> bytes) const {
        const ssize_t count = ::pread(FHandle, bytes.data(), bytes.size(), static_cast<off_t>(offset));
        return count == static_cast<ssize_t>(bytes.size());
    }

private:
    int FHandle = -1;
    std::uint64_t FSize = 0;
};

String VersionText(TNumberReader reader) {
    constexpr std::uint64_t kElfMagic = 0x464C457F;
    constexpr std::uint64_t kDosMagic = 0x5A4D;
    std::optional<TVersionWords> words;
    if (reader.Number(0, 4) == kElfMagic) {
        words = ReadElfVersion(reader);
    } else if (reader.Number(0, 2) == kDosMagic) {
        words = ReadPeVersion(reader);
    }
    if (!words || !reader.IsGood()) return {};
    const TVersionWords& w = *words;
    return Format(u"%d.%d.%d.%d", {int{w[0]}, int{w[1]}, int{w[2]}, int{w[3]}});
}

}  // namespace

std::uint64_t TNumberReader::Number(std::uint64_t offset, std::size_t width) {
    std::array<std::byte, 8> bytes = {};
    const bool inside = offset <= FSize && width <= FSize - offset;
    if (!FGood || !inside || --FReadsLeft < 0 || !FRead(offset, std::span(bytes).first(width))) {
        FGood = false;
        return 0;
    }
    if (!FBigEndian) std::reverse(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(width));
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < width; ++i) value = value << 8U | std::to_integer<std::uint64_t>(bytes[i]);
    return value;
}

String ReadFileVersion(StringView fileName) {
    String reason;
    const auto path = TryToNativePath(fileName, reason);
    if (!path) return {};
    const TRegularFile file(*path);
    return VersionText(TNumberReader(
        file.GetSize(),
        [&file](std::uint64_t offset, std::span<std::byte> bytes) { return file.Read(offset, bytes); }));
}

String ReadFileVersion(std::span<const std::byte> content) {
    return VersionText(
        TNumberReader(content.size(), [content](std::uint64_t offset, std::span<std::byte> bytes) {
            std::ranges::copy(content.subspan(static_cast<std::size_t>(offset), bytes.size()), bytes.begin());
            return true;
        }));
}

}  // namespace Varnholt

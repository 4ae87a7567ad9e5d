#pragma once

#include <cstdint>
#include <memory>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Types.h"

/// Version numbers of four parts, and the version that an executable file carries.
///
///     const auto version = TVersionNumberFactory::GetInstance(u"1.10.0.0");
///     const auto old = TVersionNumberFactory::GetInstance(1, 9, 0, 0);
///     if (version->CompareTo(*old) > 0) ...
///     const String text = GetVersion(u"C:\\opt\\station\\station.exe");  // "2.10.0.7", or empty
///
/// Platform/System/FileVersion.h says which files carry a version.
///
/// Threads: a version number never changes; the functions may be called on any thread.
namespace Varnholt {

class VARNHOLT_EXPORT IVersionNumber {
public:
    virtual ~IVersionNumber() = default;
    [[nodiscard]] virtual std::int32_t Get_Major() const = 0;
    [[nodiscard]] virtual std::int32_t Get_Minor() const = 0;
    [[nodiscard]] virtual std::int32_t Get_Release() const = 0;
    [[nodiscard]] virtual std::int32_t Get_Build() const = 0;
    /// -1 if this version is the smaller, 1 if it is the larger, 0 if both are equal. The first part that differs
    /// decides, in the order major, minor, release, build.
    [[nodiscard]] virtual std::int32_t CompareTo(const IVersionNumber& versionNumber) const = 0;
    /// "1.10.0.7"
    [[nodiscard]] virtual String ToString() const = 0;
};

/// Invalid version string "%s"
class VARNHOLT_EXPORT EInvalidVersionNumberString : public Exception {
public:
    explicit EInvalidVersionNumberString(StringView verString);

    /// The refused text.
    [[nodiscard]] const String& GetVersionString() const noexcept { return FVerString; }

private:
    String FVerString;
};

class VARNHOLT_EXPORT TVersionNumberFactory {
public:
    TVersionNumberFactory() = delete;
    /// Reads four numbers with a full stop between them; blanks around a number are ignored. A number is what
    /// StrToInt reads. Raises EInvalidVersionNumberString for any other text.
    [[nodiscard]] static std::shared_ptr<IVersionNumber> GetInstance(StringView verString);
    /// The parts are not checked.
    [[nodiscard]] static std::shared_ptr<IVersionNumber> GetInstance(std::int32_t major, std::int32_t minor,
                                                                     std::int32_t release,
                                                                     std::int32_t build);
    /// The version of an executable file; null if the file is missing or has none.
    [[nodiscard]] static std::shared_ptr<IVersionNumber> GetInstanceWithFileVersion(StringView fileName);
    /// The version of the running executable; null if it has none.
    [[nodiscard]] static std::shared_ptr<IVersionNumber> GetInstanceWithAppVersion();
};

/// The version of an executable file as text, such as "2.10.0.7"; empty if the file is missing or has none. An empty
/// name stands for the running executable.
[[nodiscard]] VARNHOLT_EXPORT String GetVersion(StringView fileName);

}  // namespace Varnholt

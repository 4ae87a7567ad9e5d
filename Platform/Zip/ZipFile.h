#pragma once

#include <cstdint>
#include <memory>

#include "Platform/Runtime/Exceptions.h"

/// The names in a zip file.
///
///     const TZipFile zip(u"C:\\data\\stations.zip");
///     if (zip.IndexOf(u"2012/may.csv") >= 0) ...
///
/// Uses libzip. Threads: an object serves one thread at a time.
namespace Varnholt {

class VARNHOLT_EXPORT EZipException : public Exception {
public:
    using Exception::Exception;
};

class VARNHOLT_EXPORT TZipFile {
public:
    /// Opens a file for reading. Raises EZipException (`%s: %s` with the path and the reason) for a file that
    /// cannot be opened or is no zip file, and EInOutError for a path without a native form.
    explicit TZipFile(StringView path);
    ~TZipFile();
    TZipFile(const TZipFile&) = delete;
    TZipFile& operator=(const TZipFile&) = delete;

    [[nodiscard]] std::int32_t GetFileCount() const;
    /// The position, from 0, of the entry of exactly that name; -1 if there is none. Separators are those in the file.
    [[nodiscard]] std::int32_t IndexOf(StringView fileName) const;

private:
    struct TImpl;
    std::unique_ptr<TImpl> FImpl;
};

}  // namespace Varnholt

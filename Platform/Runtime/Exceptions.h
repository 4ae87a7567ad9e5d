#pragma once

#include <exception>
#include <memory>

#include "Platform/Runtime/Types.h"

/// The exception family of the platform. Modules raise these classes or derive their own from them.
///
///     throw EConvertError(u"'abc' is not a valid integer value");
///     ...
///     catch (const Exception& failure) { Show(failure.GetMessage()); }
///
/// Threads: an exception may be copied and read on any thread.
namespace Varnholt {

/// Base of every exception that the library raises: a message for the user, in English.
class VARNHOLT_EXPORT Exception : public std::exception {
public:
    explicit Exception(StringView message);
    ~Exception() override;
    Exception(const Exception&) noexcept = default;
    Exception& operator=(const Exception&) noexcept = default;

    /// The message in UTF-16.
    [[nodiscard]] const String& GetMessage() const noexcept;
    /// The same message in UTF-8.
    [[nodiscard]] const char* what() const noexcept override;

private:
    struct TTexts;
    std::shared_ptr<const TTexts> FTexts;  // shared, so that copying an exception cannot fail
};

/// A text, or a value of another type, does not convert to the requested type.
class VARNHOLT_EXPORT EConvertError : public Exception {
public:
    using Exception::Exception;
};

/// A variant does not convert to the requested type.
class VARNHOLT_EXPORT EVariantError : public EConvertError {
public:
    using EConvertError::EConvertError;
};

/// An argument has a value that the operation does not accept.
class VARNHOLT_EXPORT EArgumentException : public Exception {
public:
    using Exception::Exception;
};

/// An argument that the operation needs is empty.
class VARNHOLT_EXPORT EArgumentNilException : public EArgumentException {
public:
    using EArgumentException::EArgumentException;
};

/// The operation is not valid in the current state of the object.
class VARNHOLT_EXPORT EInvalidOperation : public Exception {
public:
    using Exception::Exception;
};

/// A number is outside the range of its destination.
class VARNHOLT_EXPORT ERangeError : public Exception {
public:
    using Exception::Exception;
};

/// A position outside a list, or a duplicate in a list without duplicates.
class VARNHOLT_EXPORT EListError : public Exception {
public:
    using Exception::Exception;

    /// The error of a 0-based position outside a list: "List index out of bounds (INDEX)".
    [[nodiscard]] static EListError IndexOutOfBounds(std::int64_t index);
};

/// Reading, writing or positioning a stream failed; base of the file failures.
class VARNHOLT_EXPORT EStreamError : public Exception {
public:
    using Exception::Exception;
};

/// A file cannot be opened. The message names the path and the system's reason.
class VARNHOLT_EXPORT EFOpenError : public EStreamError {
public:
    using EStreamError::EStreamError;
};

/// A file cannot be created. The message names the path and the system's reason.
class VARNHOLT_EXPORT EFCreateError : public EStreamError {
public:
    using EStreamError::EStreamError;
};

/// Reading failed, or returned fewer bytes than requested.
class VARNHOLT_EXPORT EReadError : public EStreamError {
public:
    using EStreamError::EStreamError;
};

/// Bytes could not be written, as on a full disk. A file's message names its path.
class VARNHOLT_EXPORT EWriteError : public EStreamError {
public:
    using EStreamError::EStreamError;
};

/// A file or folder operation other than reading and writing failed. The message names the path.
class VARNHOLT_EXPORT EInOutError : public Exception {
public:
    using Exception::Exception;
};

/// Bytes or characters that are not valid in an encoding, or an unknown encoding.
class VARNHOLT_EXPORT EEncodingError : public Exception {
public:
    using Exception::Exception;
};

}  // namespace Varnholt

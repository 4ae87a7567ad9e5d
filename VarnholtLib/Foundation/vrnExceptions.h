#pragma once

#include <memory>

#include "Platform/Runtime/Exceptions.h"

/// Exceptions that hold, beside their message, the method that raised them, so that a message for the user
/// can show where a failure arose.
///
///     throw EExArgumentException(u"DoubleArrayCreateJagged", u"Width", u"Width must be >= 1");
///     ...
///     catch (const EExArgumentException& failure) {
///         Show(failure.GetInfo() + u" in " + failure.GetTypeAndMethod());
///     }
///
/// "Type and method" names the class, if any, and the operation that raised the exception. GetMessage of an
/// argument exception is only the argument's name; the code that shows it adds a sentence around it.
///
/// Threads: an exception may be copied and read on any thread.
namespace Varnholt {

/// A text that never changes and is shared by its copies, so that copying an exception cannot fail.
class VARNHOLT_EXPORT TSharedText {
public:
    explicit TSharedText(StringView text);
    TSharedText(const TSharedText&) noexcept = default;
    TSharedText& operator=(const TSharedText&) noexcept = default;
    ~TSharedText() = default;

    [[nodiscard]] const String& Get() const noexcept { return *FText; }

private:
    std::shared_ptr<const String> FText;
};

/// A failure with the method that found it. Message: the info.
class VARNHOLT_EXPORT EExException : public Exception {
public:
    EExException(StringView typeAndMethod, StringView info);

    [[nodiscard]] const String& GetTypeAndMethod() const noexcept { return FTypeAndMethod.Get(); }
    [[nodiscard]] const String& GetInfo() const noexcept { return FInfo.Get(); }

private:
    TSharedText FTypeAndMethod;
    TSharedText FInfo;
};

/// An argument is empty that must not be. Message: the argument's name.
class VARNHOLT_EXPORT EExArgumentNilException : public EArgumentNilException {
public:
    EExArgumentNilException(StringView typeAndMethod, StringView argName);

    [[nodiscard]] const String& GetTypeAndMethod() const noexcept { return FTypeAndMethod.Get(); }
    [[nodiscard]] const String& GetArgName() const noexcept { return FArgName.Get(); }

private:
    TSharedText FTypeAndMethod;
    TSharedText FArgName;
};

/// An argument has a value that the method does not accept. The info says why, or is empty. Message: the
/// argument's name.
class VARNHOLT_EXPORT EExArgumentException : public EArgumentException {
public:
    EExArgumentException(StringView typeAndMethod, StringView argName, StringView info);

    [[nodiscard]] const String& GetTypeAndMethod() const noexcept { return FTypeAndMethod.Get(); }
    [[nodiscard]] const String& GetArgName() const noexcept { return FArgName.Get(); }
    [[nodiscard]] const String& GetInfo() const noexcept { return FInfo.Get(); }

private:
    TSharedText FTypeAndMethod;
    TSharedText FArgName;
    TSharedText FInfo;
};

/// Something that the method uses has not been initialized. Message: "Item not initialized: " and the item's
/// name.
class VARNHOLT_EXPORT EExObjectNotInitializedException : public Exception {
public:
    EExObjectNotInitializedException(StringView typeAndMethod, StringView itemName, StringView info);

    [[nodiscard]] const String& GetTypeAndMethod() const noexcept { return FTypeAndMethod.Get(); }
    [[nodiscard]] const String& GetItemName() const noexcept { return FItemName.Get(); }
    [[nodiscard]] const String& GetInfo() const noexcept { return FInfo.Get(); }

private:
    TSharedText FTypeAndMethod;
    TSharedText FItemName;
    TSharedText FInfo;
};

}  // namespace Varnholt

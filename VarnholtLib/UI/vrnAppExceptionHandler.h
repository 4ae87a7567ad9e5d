#pragma once

#include "Platform/Controls/Application.h"

/// Readable messages for exceptions that no code of the application handles.
///
///     TAppExceptionHandler handler;
///     handler.Register();
///     Application().Run(mainForm);
///
/// A descendant may add classes (GetMessage) or show the messages elsewhere (PresentError).
///
/// Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT TAppExceptionHandler {
public:
    TAppExceptionHandler();
    /// Calls Unregister.
    virtual ~TAppExceptionHandler();
    TAppExceptionHandler(const TAppExceptionHandler&) = delete;
    TAppExceptionHandler& operator=(const TAppExceptionHandler&) = delete;

    /// Makes OnException of this object the application's exception event, in place of another.
    void Register();
    /// Clears the event, if it is that of this object.
    void Unregister();
    /// Presents the message of GetMessage; for a class that it does not know, the exception's own with the title "Error".
    void OnException(TObject* sender, const Exception& exception);

    /// The message and title of an exception, by the first of these classes that it belongs to; false for all others.
    ///
    /// | class                            | title                         | message                                     |
    /// |----------------------------------|-------------------------------|---------------------------------------------|
    /// | EExException                     | "Exception"                   | the info, and the method                    |
    /// | EExArgumentNilException          | "Parameter null exception"    | a sentence, the method and the parameter    |
    /// | EExArgumentException             | "Parameter invalid exception" | a sentence, the info if there is one, the method and the parameter |
    /// | EArgumentNilException            | "Parameter null exception"    | a sentence and the exception's message      |
    /// | EArgumentException               | "Parameter invalid exception" | a sentence and the exception's message      |
    /// | EExObjectNotInitializedException | empty                         | a sentence, the info if there is one, the method and the object |
    ///
    /// Lines end with CR LF; a blank line is between the parts.
    [[nodiscard]] virtual bool GetMessage(const Exception& exception, String& message, String& title);
    /// Shows TMsgBox::Error.
    virtual void PresentError(const Exception& exception, const String& message, const String& title);

private:
    const TExceptionEvent FOnException;
};

}  // namespace Varnholt

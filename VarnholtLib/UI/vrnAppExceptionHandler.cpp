#include "VarnholtLib/UI/vrnAppExceptionHandler.h"

#include "VarnholtLib/Foundation/vrnExceptions.h"
#include "VarnholtLib/UI/vrnMessageBox.h"

namespace Varnholt {
namespace {

constexpr StringView kNilTitle = u"Parameter null exception";
constexpr StringView kInvalidTitle = u"Parameter invalid exception";
constexpr StringView kInvalid = u"A method was provided an invalid parameter";

}  // namespace

TAppExceptionHandler::TAppExceptionHandler()
    : FOnException([this](TObject* sender, const Exception& exception) { OnException(sender, exception); }) {}

TAppExceptionHandler::~TAppExceptionHandler() {
    Unregister();
}

void TAppExceptionHandler::Register() {
    Application().SetOnException(FOnException);
}

void TAppExceptionHandler::Unregister() {
    if (Application().GetOnException() == FOnException) Application().SetOnException({});
}

void TAppExceptionHandler::OnException(TObject*, const Exception& exception) {
    String message, title;
    if (GetMessage(exception, message, title)) {
        PresentError(exception, message, title);
    } else {
        TMsgBox::Error(exception.GetMessage(), u"Error");
    }
}

bool TAppExceptionHandler::GetMessage(const Exception& exception, String& message, String& title) {
    const auto set = [&](StringView newTitle, StringView format, TMsgBox::TArgs args) {
        title = newTitle;
        message = Format(format, args);
        return true;
    };
    if (const auto* const e = dynamic_cast<const EExException*>(&exception))
        return set(u"Exception", u"%s\r\n\r\nMethod: %s", {e->GetInfo(), e->GetTypeAndMethod()});
    if (const auto* const e = dynamic_cast<const EExArgumentNilException*>(&exception))
        return set(kNilTitle, u"A method was provided a null parameter.\r\n\r\nMethod: %s\r\nParameter: %s",
                   {e->GetTypeAndMethod(), e->GetArgName()});
    if (const auto* const e = dynamic_cast<const EExArgumentException*>(&exception)) {
        const String reason = e->GetInfo().empty() ? String(u":") : u".\r\n\r\n" + e->GetInfo();
        return set(kInvalidTitle, u"%s%s\r\n\r\nMethod: %s\r\nParameter: %s",
                   {kInvalid, reason, e->GetTypeAndMethod(), e->GetArgName()});
    }
    if (dynamic_cast<const EArgumentNilException*>(&exception) != nullptr)
        return set(kNilTitle, u"A method was provided a null parameter:\r\n\r\nParameter: %s",
                   {exception.GetMessage()});
    if (dynamic_cast<const EArgumentException*>(&exception) != nullptr)
        return set(kInvalidTitle, u"%s.\r\n\r\n%s", {kInvalid, exception.GetMessage()});
    if (const auto* const e = dynamic_cast<const EExObjectNotInitializedException*>(&exception)) {
        const String info = e->GetInfo().empty() ? String() : e->GetInfo() + u"\r\n\r\n";
        return set(u"", u"An object is not initialized (is null): \r\n\r\n%sMethod: %s\r\n\r\nObject: %s",
                   {info, e->GetTypeAndMethod(), e->GetItemName()});
    }
    return false;
}

void TAppExceptionHandler::PresentError(const Exception&, const String& message, const String& title) {
    TMsgBox::Error(message, title);
}

}  // namespace Varnholt

#pragma once

#include "Platform/Controls/Component.h"
#include "Platform/Runtime/Guid.h"

/// Forms that take commands from elsewhere in an application, as from a toolbar of the main form.
///
///     class IStationForm : public ICommandableForm { public: virtual void Recalculate() = 0; };
///     class TStationForm : public TForm, public IStationForm { ... };
///
///     ICommandableForm* form = nullptr;
///     if (GetCommandableForm(Screen().GetActiveForm(), form)) ...
///
/// The interface marks such forms. What the commands are is each application's own, in an interface derived from
/// this one.
///
/// Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT ICommandableForm {
public:
    static constexpr TGuid kGuid = TGuid::FromText(u"{8216D5B6-0199-4287-88B5-CE8DA3E1FC18}");
    virtual ~ICommandableForm();

protected:
    ICommandableForm() = default;
    ICommandableForm(const ICommandableForm&) = default;
    ICommandableForm& operator=(const ICommandableForm&) = default;
};

/// Whether the control takes commands, and its interface, otherwise null. The control may be null.
VARNHOLT_EXPORT bool GetCommandableForm(TComponent* control, ICommandableForm*& commandableForm) noexcept;
[[nodiscard]] VARNHOLT_EXPORT bool GetCommandableForm(TComponent* control) noexcept;

}  // namespace Varnholt

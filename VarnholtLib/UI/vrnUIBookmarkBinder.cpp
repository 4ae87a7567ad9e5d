#include "VarnholtLib/UI/vrnUIBookmarkBinder.h"

#include <utility>

#include "Platform/Runtime/Format.h"
#include "VarnholtLib/UI/vrnCommonUIBookmarkValueAdapters.h"

namespace Varnholt {

// --- Adapters ---

TUIBookmarkValueAdapters::TUIBookmarkValueAdapters() {
    Add(std::make_shared<TCheckBoxUIBookmarkValueAdapter>());
    Add(std::make_shared<TEditUIBookmarkValueAdapter>());
    Add(std::make_shared<TRadioButtonUIBookmarkValueAdapter>());
}

std::shared_ptr<IUIBookmarkValueAdapter> TUIBookmarkValueAdapters::GetAdapter(const TControl& control) const {
    return GetAdapter(control.ClassName());
}

std::shared_ptr<IUIBookmarkValueAdapter> TUIBookmarkValueAdapters::GetAdapter(StringView typeName) const {
    return FirstOrDefault(
        [&](const auto& adapter) { return adapter != nullptr && adapter->GetControlTypeName() == typeName; },
        nullptr);
}

// --- The binder ---

TUIBookmarkBinder::TUIBookmarkBinder()
    : FBindings(std::make_shared<TInterfacedList<std::shared_ptr<IUIBookmarkBinding>>>()) {}

void TUIBookmarkBinder::Add(TControl* control) {
    Add(control, control == nullptr ? String() : control->GetName());
}

void TUIBookmarkBinder::Add(TControl* control, StringView valueKey) {
    if (control == nullptr) throw EInvalidOperation(u"Control cannot be null");
    if (FAdapters == nullptr) throw EInvalidOperation(u"Adapters object not specified");
    if (FAdapters->GetAdapter(*control) == nullptr)
        throw EInvalidOperation(
            Format(u"A value adapter for control type \"%s\" not found", {control->ClassName()}));
    const auto binding = std::make_shared<TUIBookmarkBinding>(valueKey, control);
    FBindings->Add(binding);
    TBound& bound = FControlDict[control];
    if (bound.Control) throw EListError(Format(u"Control \"%s\" is bound already", {control->GetName()}));
    bound = {control, binding};
    TBound& named = FValueKeyDict[String(valueKey)];
    if (named.Control) throw EListError(Format(u"Key \"%s\" is bound already", {valueKey}));
    named = {control, binding};
}

std::shared_ptr<IUIBookmarkBinding> TUIBookmarkBinder::GetBinding(const TControl* control) const {
    const auto found = FControlDict.find(control);
    if (found == FControlDict.end() || !found->second.Control) throw EListError(u"The control is not bound");
    return found->second.Binding;
}

std::shared_ptr<IUIBookmarkBinding> TUIBookmarkBinder::GetBinding(StringView valueKey) const {
    const auto found = FValueKeyDict.find(String(valueKey));
    if (found == FValueKeyDict.end()) throw EListError(Format(u"Key \"%s\" is not bound", {valueKey}));
    return found->second.Binding;
}

void TUIBookmarkBinder::SetAdapters(std::shared_ptr<IUIBookmarkValueAdapters> value) {
    FAdapters = std::move(value);
}

std::shared_ptr<IUIBookmarkValueAdapter> TUIBookmarkBinder::AdapterOf(const TControl* control) const {
    return control == nullptr || FAdapters == nullptr ? nullptr : FAdapters->GetAdapter(*control);
}

void TUIBookmarkBinder::UpdateBookmark(IUIBookmark& bookmark) {
    bookmark.GetValues().clear();
    for (const std::shared_ptr<IUIBookmarkBinding>& binding : *FBindings) {
        TControl* const control = binding->GetControl();
        if (const auto adapter = AdapterOf(control))
            bookmark.SetValue(binding->GetValueKey(), adapter->GetData(*control));
    }
}

void TUIBookmarkBinder::UpdateControls(IUIBookmark& bookmark) {
    const TUIBookmarkValues& values = bookmark.GetValues();
    for (const std::shared_ptr<IUIBookmarkBinding>& binding : *FBindings) {
        TControl* const control = binding->GetControl();
        const auto adapter = AdapterOf(control);
        const auto value = values.find(binding->GetValueKey());
        if (adapter == nullptr || value == values.end()) continue;
        const String data = value->second;  // a handler may change the bookmark
        try {
            adapter->UpdateControl(*control, data);
        } catch (...) {
            // A value that no longer fits costs this control only.
        }
    }
}

std::shared_ptr<IUIBookmarkBinder> TUIBookmarkBinderFactory::GetObject() {
    return std::make_shared<TUIBookmarkBinder>();
}

}  // namespace Varnholt

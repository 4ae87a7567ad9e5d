#pragma once

#include <cstdint>
#include <memory>

#include "Platform/Runtime/Event.h"
#include "Platform/Runtime/Types.h"

/// The base of controls, menu items and timers: a name, a tag, and references that know when the component is destroyed.
///
///     const TComponentRef<TEdit> edit(&form.Add<TEdit>(u"edName"));
///     ...
///     if (TEdit* const alive = edit.Get()) alive->SetText(u"Bergen");
///
/// Threads: components belong to the main thread.
namespace Varnholt {

class VARNHOLT_EXPORT TComponent : public TObject {
public:
    TComponent();
    ~TComponent() override;
    TComponent(const TComponent&) = delete;
    TComponent& operator=(const TComponent&) = delete;

    /// The name of the object's exact class without its namespace, as "TEdit". A derived class has its own name.
    [[nodiscard]] const String& ClassName() const;

    [[nodiscard]] const String& GetName() const noexcept { return FName; }
    void SetName(StringView name) { FName = name; }
    /// A number for the application's own use.
    [[nodiscard]] std::int32_t GetTag() const noexcept { return FTag; }
    void SetTag(std::int32_t tag) noexcept { FTag = tag; }

private:
    template <typename T>
    friend class TComponentRef;

    String FName;
    std::shared_ptr<const void> FLife;  // expires with the component
    std::int32_t FTag = 0;
};

/// A reference to a component that somebody else owns. It becomes null when the component is destroyed.
template <typename T>
class TComponentRef {
public:
    TComponentRef() = default;
    TComponentRef(T* component) noexcept : FComponent(component) {
        if (component != nullptr) FLife = static_cast<const TComponent*>(component)->FLife;
    }

    [[nodiscard]] T* Get() const noexcept { return FLife.expired() ? nullptr : FComponent; }
    [[nodiscard]] explicit operator bool() const noexcept { return Get() != nullptr; }

private:
    T* FComponent = nullptr;
    std::weak_ptr<const void> FLife;
};

}  // namespace Varnholt

#pragma once

#include <unordered_map>

#include "Platform/Controls/Control.h"
#include "VarnholtLib/UI/vrnUIBookmark.h"

/// Carries the state of a dialog's controls into a bookmark and back.
///
///     const std::shared_ptr<IUIBookmarkBinder> binder = TUIBookmarkBinderFactory::GetObject();
///     binder->SetAdapters(std::make_shared<TUIBookmarkValueAdapters>());
///     binder->Add(&form.edName);                          // under the control's name
///     binder->Add(&form.cbDaily, u"daily");
///     ...
///     binder->UpdateBookmark(*bookmark);                  // controls to bookmark
///     binder->UpdateControls(*bookmark);                  // bookmark to controls
///
/// A value adapter turns the state of one class of control into a text and back. The adapter of a control is that
/// of its exact class name, and is looked up at each pass. TUIBookmarkValueAdapters knows TCheckBox, TEdit and
/// TRadioButton; those for TComboBox and TPageControl (vrnCommonUIBookmarkValueAdapters.h), and an application's
/// own, are added to the list.
///
/// Controls are not owned. A binding whose control was destroyed is passed over, and its key can be bound anew; until
/// then the binder finds it under the key.
///
/// Threads: the thread of the controls.
namespace Varnholt {

class VARNHOLT_EXPORT IUIBookmarkValueAdapter {
public:
    virtual ~IUIBookmarkValueAdapter() = default;
    /// The state of the control. Adapters raise what they like; those of the library EInvalidOperation `Control
    /// "%s" is not a %s` for a control of another class.
    [[nodiscard]] virtual String GetData(TControl& control) = 0;
    /// Sets the state, and raises the control's notifications.
    virtual void UpdateControl(TControl& control, StringView data) = 0;
    /// The exact name of the class of controls.
    [[nodiscard]] virtual String GetControlTypeName() const = 0;
};

/// Adapters, of which the first of a class counts.
class VARNHOLT_EXPORT IUIBookmarkValueAdapters
    : public virtual IList<std::shared_ptr<IUIBookmarkValueAdapter>> {
public:
    /// The adapter for the class of a control, or of that name; null if there is none.
    [[nodiscard]] virtual std::shared_ptr<IUIBookmarkValueAdapter> GetAdapter(
        const TControl& control) const = 0;
    [[nodiscard]] virtual std::shared_ptr<IUIBookmarkValueAdapter> GetAdapter(StringView typeName) const = 0;
};

class VARNHOLT_EXPORT TUIBookmarkValueAdapters final
    : public TInterfacedList<std::shared_ptr<IUIBookmarkValueAdapter>>,
      public IUIBookmarkValueAdapters {
public:
    /// With the adapters for TCheckBox, TEdit and TRadioButton.
    TUIBookmarkValueAdapters();
    [[nodiscard]] std::shared_ptr<IUIBookmarkValueAdapter> GetAdapter(const TControl& control) const override;
    [[nodiscard]] std::shared_ptr<IUIBookmarkValueAdapter> GetAdapter(StringView typeName) const override;
};

/// One control and its key. The setters change the binding alone: its binder still finds it under the former key
/// and control.
class VARNHOLT_EXPORT IUIBookmarkBinding {
public:
    virtual ~IUIBookmarkBinding() = default;
    [[nodiscard]] virtual String GetValueKey() const = 0;
    virtual void SetValueKey(StringView value) = 0;
    /// Null once the control is destroyed.
    [[nodiscard]] virtual TControl* GetControl() const = 0;
    virtual void SetControl(TControl* value) = 0;
};

class VARNHOLT_EXPORT TUIBookmarkBinding final : public IUIBookmarkBinding {
public:
    TUIBookmarkBinding(StringView valueKey, TControl* control) : FValueKey(valueKey), FControl(control) {}
    [[nodiscard]] String GetValueKey() const override { return FValueKey; }
    void SetValueKey(StringView value) override { FValueKey = value; }
    [[nodiscard]] TControl* GetControl() const override { return FControl.Get(); }
    void SetControl(TControl* value) override { FControl = value; }

private:
    String FValueKey;
    TComponentRef<TControl> FControl;
};

class VARNHOLT_EXPORT IUIBookmarkBinder {
public:
    virtual ~IUIBookmarkBinder() = default;
    /// Binds a control under its own name.
    virtual void Add(TControl* control) = 0;
    /// Binds a control under a key. EInvalidOperation `Control cannot be null`, `Adapters object not specified`, or
    /// `A value adapter for control type "%s" not found`. A control or a key that is bound already raises
    /// EListError `Control "%s" is bound already` or `Key "%s" is bound already`; the new binding takes part in the
    /// passes all the same, and is found under its control if only the key is in use.
    virtual void Add(TControl* control, StringView valueKey) = 0;
    /// The binding of a control. EListError `The control is not bound`.
    [[nodiscard]] virtual std::shared_ptr<IUIBookmarkBinding> GetBinding(const TControl* control) const = 0;
    /// The binding of a key. EListError `Key "%s" is not bound`.
    [[nodiscard]] virtual std::shared_ptr<IUIBookmarkBinding> GetBinding(StringView valueKey) const = 0;
    /// Null at first.
    [[nodiscard]] virtual std::shared_ptr<IUIBookmarkValueAdapters> GetAdapters() const = 0;
    virtual void SetAdapters(std::shared_ptr<IUIBookmarkValueAdapters> value) = 0;
    /// Replaces all values of the bookmark by those of the controls, in the order of Add. A control without an
    /// adapter is left out. An adapter that raises ends it, with the values so far.
    virtual void UpdateBookmark(IUIBookmark& bookmark) = 0;
    /// Sets the controls from the bookmark, in the order of Add. A control without an adapter, or whose key the
    /// bookmark does not have, is not touched. What an adapter or a handler raises is ignored, and the next control
    /// follows. Adapters call handlers with a null sender, that of TPageControl with the control.
    virtual void UpdateControls(IUIBookmark& bookmark) = 0;
};

class VARNHOLT_EXPORT TUIBookmarkBinder final : public IUIBookmarkBinder {
public:
    TUIBookmarkBinder();
    void Add(TControl* control) override;
    void Add(TControl* control, StringView valueKey) override;
    [[nodiscard]] std::shared_ptr<IUIBookmarkBinding> GetBinding(const TControl* control) const override;
    [[nodiscard]] std::shared_ptr<IUIBookmarkBinding> GetBinding(StringView valueKey) const override;
    [[nodiscard]] std::shared_ptr<IUIBookmarkValueAdapters> GetAdapters() const override { return FAdapters; }
    void SetAdapters(std::shared_ptr<IUIBookmarkValueAdapters> value) override;
    void UpdateBookmark(IUIBookmark& bookmark) override;
    void UpdateControls(IUIBookmark& bookmark) override;

private:
    struct TBound {
        TComponentRef<TControl> Control;  // its address may be another control's by now
        std::shared_ptr<IUIBookmarkBinding> Binding;
    };

    /// The adapter of a control; null if there is none.
    [[nodiscard]] std::shared_ptr<IUIBookmarkValueAdapter> AdapterOf(const TControl* control) const;

    std::shared_ptr<TInterfacedList<std::shared_ptr<IUIBookmarkBinding>>> FBindings;
    std::unordered_map<const TControl*, TBound> FControlDict;
    std::unordered_map<String, TBound> FValueKeyDict;
    std::shared_ptr<IUIBookmarkValueAdapters> FAdapters;
};

class VARNHOLT_EXPORT TUIBookmarkBinderFactory {
public:
    TUIBookmarkBinderFactory() = delete;
    /// A binder without bindings and adapters.
    [[nodiscard]] static std::shared_ptr<IUIBookmarkBinder> GetObject();
};

}  // namespace Varnholt

#pragma once

#include "Platform/Controls/Control.h"

/// Pages, of which one is visible.
///
///     TPageControl& pages = form.Add<TPageControl>(u"pcReport");
///     TTabSheet& station = pages.Add<TTabSheet>(u"tsStation");
///     station.SetCaption(u"Station");
///     station.Add<TEdit>(u"edName");
///
/// The pages are the children of the page control that are tab sheets, in order; indices count from 0. The first
/// page becomes the active one.
///
/// Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT TTabSheet : public TWinControl {
public:
    TTabSheet();
    ~TTabSheet() override;
    /// The text of the tab.
    [[nodiscard]] const String& GetCaption() const noexcept { return FCaption; }
    void SetCaption(StringView caption);

protected:
    [[nodiscard]] bool TakesInput() const noexcept override { return false; }

private:
    String FCaption;
};

class VARNHOLT_EXPORT TPageControl : public TWinControl {
public:
    TPageControl();
    ~TPageControl() override;

    [[nodiscard]] std::int32_t GetPageCount() const noexcept;
    /// EListError as a list.
    [[nodiscard]] TTabSheet& GetPage(std::int32_t index) const;
    /// Null if there is no page, or after SetActivePage(nullptr).
    [[nodiscard]] TTabSheet* GetActivePage() const noexcept { return FActivePage.Get(); }
    /// Raises no event. EInvalidOperation `Control "%s" has no child "%s"` for a page of another control.
    void SetActivePage(TTabSheet* page);

    /// Raised when a person chooses another page.
    [[nodiscard]] const TNotifyEvent& GetOnChange() const noexcept { return FOnChange; }
    void SetOnChange(TNotifyEvent onChange) { FOnChange = std::move(onChange); }
    /// A person chooses a page; false for one that is not there.
    bool SelectPageByUser(std::int32_t index);

protected:
    [[nodiscard]] TSize GetClientSize() const override;
    void ControlsChanged() override;

private:
    [[nodiscard]] std::vector<TTabSheet*> Pages() const;

    TNotifyEvent FOnChange;
    TComponentRef<TTabSheet> FActivePage;
    std::int32_t FActiveIndex = 0;  // of the active page when it was there last
};

}  // namespace Varnholt

#pragma once

#include "Platform/Controls/Control.h"

/// Texts, panels, progress bars and surfaces for drawings, which take no input.
///
///     TPaintBox& chart = form.Add<TPaintBox>(u"pbChart");
///     chart.SetOnPaint([&](TObject*, TCanvas& canvas, const TRect& area) { Draw(canvas, area); });
///     chart.Repaint();                                     // after a change of what is drawn
///
/// Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT TLabel : public TControl {
public:
    TLabel();
    ~TLabel() override;
    [[nodiscard]] const String& GetCaption() const noexcept { return FCaption; }
    void SetCaption(StringView caption);

protected:
    [[nodiscard]] StringView GetPaintedText() const noexcept override { return FCaption; }

private:
    String FCaption;
};

/// A surface for other controls.
class VARNHOLT_EXPORT TPanel : public TWinControl {
public:
    TPanel();
    ~TPanel() override;
    [[nodiscard]] const String& GetCaption() const noexcept { return FCaption; }
    void SetCaption(StringView caption);

protected:
    [[nodiscard]] StringView GetPaintedText() const noexcept override { return FCaption; }
    [[nodiscard]] bool TakesInput() const noexcept override { return false; }

private:
    String FCaption;
};

/// How much of a work is done.
class VARNHOLT_EXPORT TProgressBar : public TControl {
public:
    TProgressBar();
    ~TProgressBar() override;
    /// In percent, put between 0 and 100; below 0 for a work of unknown length. 0 at first.
    [[nodiscard]] std::int32_t GetPercent() const noexcept { return FPercent; }
    void SetPercent(std::int32_t percent);

private:
    std::int32_t FPercent = 0;
};

/// The canvas, and the rectangle on it that the control covers.
using TPaintEvent = TEvent<TObject*, TCanvas&, const TRect&>;

/// A surface that the application draws.
class VARNHOLT_EXPORT TPaintBox : public TControl {
public:
    TPaintBox();
    ~TPaintBox() override;
    /// Raised whenever the control is to be seen. What it raises leaves the drawing as far as it got.
    [[nodiscard]] const TPaintEvent& GetOnPaint() const noexcept { return FOnPaint; }
    void SetOnPaint(TPaintEvent onPaint);

protected:
    void Paint(TCanvas& canvas, std::int32_t x, std::int32_t y) override;

private:
    TPaintEvent FOnPaint;
};

}  // namespace Varnholt

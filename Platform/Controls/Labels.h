#pragma once

#include "Platform/Controls/Control.h"

/// Texts and panels, which take no input.
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

}  // namespace Varnholt

#pragma once

namespace Varnholt {

/// Sets a flag until the end of the scope, for guards against re-entry:
///
///     if (FInUpdate) return;
///     const TFlagScope scope(FInUpdate);
class TFlagScope {
public:
    explicit TFlagScope(bool& flag) noexcept : FFlag(flag) { FFlag = true; }
    ~TFlagScope() { FFlag = false; }
    TFlagScope(const TFlagScope&) = delete;
    TFlagScope& operator=(const TFlagScope&) = delete;

private:
    bool& FFlag;
};

}  // namespace Varnholt

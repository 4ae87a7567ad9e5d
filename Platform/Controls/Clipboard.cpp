#include "Platform/Controls/Clipboard.h"

#include "Platform/System/Platform.h"

namespace Varnholt {

bool TClipboard::HasFormat(std::uint16_t format) const {
    return format == kClipboardText && Platform().Clipboard->HasText();
}

String TClipboard::GetAsText() const {
    return Platform().Clipboard->GetText();
}

void TClipboard::SetAsText(StringView text) {
    Platform().Clipboard->SetText(text);
}

TClipboard& Clipboard() noexcept {
    static TClipboard clipboard;
    return clipboard;
}

}  // namespace Varnholt

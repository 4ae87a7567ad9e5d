#include "Platform/Drawing/Colors.h"

#include <array>
#include <cstddef>

namespace Varnholt {
namespace {

constexpr TColor kPlain = 0x00FFFFFF;
constexpr TColor kSystem = 0xFF000000;

// By number. The classic values of a desktop without a theme.
constinit std::array<TColor, 31> systemColors = {
    0xC8C8C8, 0x000000, 0xD1B499, 0xDBCDBF, 0xF0F0F0, 0xFFFFFF, 0x646464,
    0x000000,  // to the menu text
    0x000000, 0x000000, 0xB4B4B4, 0xFCF7F4, 0xABABAB, 0xD77800, 0xFFFFFF,
    0xF0F0F0,  // to the button face
    0xA0A0A0, 0x6D6D6D, 0x000000, 0x000000, 0xFFFFFF, 0x696969, 0xE3E3E3,
    0x000000,  // to the information text
    0xE1FFFF, 0x000000, 0xCC6600, 0xEAD1B9, 0xF2E4D7, 0xD77800, 0xF0F0F0,
};

/// The entry of a system colour, or null.
TColor* FindSystemColor(TColor color) noexcept {
    const std::size_t number = color & kPlain;
    return (color & kSystem) == kSystem && number < systemColors.size() ? &systemColors[number] : nullptr;
}

}  // namespace

TColor ColorToRGB(TColor color) noexcept {
    if ((color & kSystem) != kSystem) return color & kPlain;
    const TColor* const found = FindSystemColor(color);
    return found == nullptr ? clBlack : *found;
}

void SetSystemColor(TColor color, TColor plain) noexcept {
    if (TColor* const found = FindSystemColor(color)) *found = plain & kPlain;
}

}  // namespace Varnholt

#include "VarnholtLib/UI/vrnKeyboard.h"

#include "Platform/System/Platform.h"

namespace Varnholt {

bool TKeyboard::IsKeyDown(std::int32_t vk) {
    return (Platform().Keyboard->GetKeyState(vk) & 0x80) != 0;
}

}  // namespace Varnholt

#include "platform/system/keys.h"

#include "platform/seam/desktop.h"

using namespace zel;

SHORT GetAsyncKeyState(int virtualKey) {
    constexpr SHORT kDown = INT16_MIN;  // the highest bit
    return seam::GetDesktop().IsKeyDown(virtualKey) ? kDown : SHORT{0};
}

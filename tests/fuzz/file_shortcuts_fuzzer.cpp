#include "platform/shortcuts/KdeShortcuts.h"
#include "platform/shortcuts/OpenboxShortcuts.h"
#include "tests/fuzz/Require.h"

#include <cstddef>

/// Every shortcut in a file of the desktop that the build names names a key.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace glimmerly;
    for (const auto& shortcut : SHORTCUTS_OF_FILE({reinterpret_cast<const char*>(data), size}))
        require(shortcut.keys.symbol != XKB_KEY_NoSymbol ||
                (shortcut.keys.keycode > 0 && shortcut.keys.keycode <= 255));
    return 0;
}

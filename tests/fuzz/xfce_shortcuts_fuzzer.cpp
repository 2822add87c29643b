#include "platform/shortcuts/XfceShortcuts.h"
#include "tests/fuzz/Require.h"

#include <array>

/// Every shortcut names a key, and reading the same twice changes nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace glimmerly;
    const std::string channel(reinterpret_cast<const char*>(data), size);
    const auto shortcuts = xfceShortcuts(std::array{channel});
    for (const auto& shortcut : shortcuts)
        require(shortcut.keys.symbol != XKB_KEY_NoSymbol ||
                (shortcut.keys.keycode > 0 && shortcut.keys.keycode <= 255));
    require(xfceShortcuts(std::array{channel, channel}) == shortcuts);
    return 0;
}

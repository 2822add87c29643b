#include "platform/shortcuts/KeyStroke.h"
#include "tests/fuzz/Require.h"

#include <string>

/// What is a shortcut stays one with a modifier more.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace glimmerly;
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto keys = parseGtkAccelerator(text);
    require(parseGtkAccelerator("<Super>" + text).has_value() == keys.has_value());
    return 0;
}

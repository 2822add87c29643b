#include "platform/linux/updates/feed/VersionOrder.h"
#include "tests/fuzz/Require.h"

#include <array>
#include <cstdint>

using namespace glimmerly;

/// Three texts, a line each, stand in one order whichever way they are compared.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    std::array<std::string_view, 3> texts;
    for (auto& text : texts) {
        text = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), text.size() + 1));
    }
    const auto [a, b, c] = texts;
    require(compareVersions(a, a) == 0);
    require((compareVersions(a, b) < 0) == (compareVersions(b, a) > 0));
    if (compareVersions(a, b) <= 0 && compareVersions(b, c) <= 0)
        require(compareVersions(a, c) <= 0);
    return 0;
}

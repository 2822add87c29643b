#include "base/JsonText.h"

namespace glimmerly {

std::string withEscapedSolidus(std::string_view json) {
    std::string escaped;
    escaped.reserve(json.size() + 16);
    for (const char c : json) {
        if (c == '/') // outside strings JSON has none
            escaped += '\\';
        escaped += c;
    }
    return escaped;
}

} // namespace glimmerly

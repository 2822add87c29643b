#include "platform/qt/KeyNames.h"

#include <string_view>

namespace glimmerly {

QString KeyNames::translate(const char* context, const char* text, const char*, int) const {
    using std::string_view;
    const bool isMeta = string_view(context) == "QShortcut" && string_view(text) == "Meta";
    return isMeta ? "Super" : QString();
}

} // namespace glimmerly

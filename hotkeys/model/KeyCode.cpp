#include "hotkeys/model/KeyCode.h"

#include "platform/KeyboardLayout.h"

namespace glimmerly {

const std::unordered_map<KeyCode, std::string>& specialKeyNames() {
    // clang-format off
    static const std::unordered_map<KeyCode, std::string> names{
        // Whitespace and editing.
        {{49}, "Space"}, {{48}, "\u21E5"}, {{36}, "\u23CE"}, {{51}, "\u232B"}, {{117}, "\u2326"},
        {{53}, "\u238B"}, {{71}, "\u2327"}, {{76}, "\u2324"},
        // Function keys.
        {{122}, "F1"}, {{120}, "F2"}, {{99}, "F3"}, {{118}, "F4"}, {{96}, "F5"}, {{97}, "F6"}, {{98}, "F7"},
        {{100}, "F8"}, {{101}, "F9"}, {{109}, "F10"}, {{103}, "F11"}, {{111}, "F12"}, {{105}, "F13"},
        {{107}, "F14"}, {{113}, "F15"}, {{106}, "F16"}, {{64}, "F17"}, {{79}, "F18"}, {{80}, "F19"},
        {{90}, "F20"},
        // Navigation.
        {{116}, "\u21DE"}, {{121}, "\u21DF"}, {{115}, "\u2196"}, {{119}, "\u2198"}, {{123}, "\u2190"},
        {{124}, "\u2192"}, {{125}, "\u2193"}, {{126}, "\u2191"},
        // Modifier keys.
        {{57}, "\u21EA"}, {{59}, "\u2303"}, {{62}, "\u2303"}, {{58}, "\u2325"}, {{61}, "\u2325"},
        {{56}, "\u21E7"}, {{60}, "\u21E7"}, {{55}, "\u2318"}, {{54}, "\u2318"},
        // Volume: speakers, loud, medium and muted.
        {{72}, "\U0001F50A"}, {{73}, "\U0001F509"}, {{74}, "\U0001F507"},
        // Keypad: each within the combining enclosing keycap.
        {{82}, "0\u20E3"}, {{83}, "1\u20E3"}, {{84}, "2\u20E3"}, {{85}, "3\u20E3"}, {{86}, "4\u20E3"},
        {{87}, "5\u20E3"}, {{88}, "6\u20E3"}, {{89}, "7\u20E3"}, {{91}, "8\u20E3"}, {{92}, "9\u20E3"},
        {{65}, ".\u20E3"}, {{75}, "/\u20E3"}, {{81}, "=\u20E3"}, {{78}, "-\u20E3"}, {{67}, "*\u20E3"},
        {{69}, "+\u20E3"},
        // The globe key, and help within the combining enclosing circle.
        {{63}, "\U0001F310\uFE0E\uFE0E"}, {{114}, "?\u20DD"},
    };
    // clang-format on
    return names;
}

std::string keyDisplayName(KeyCode key, const KeyboardLayout& layout) {
    if (const auto special = specialKeyNames().find(key); special != specialKeyNames().end())
        return special->second;
    return layout.translate(key.rawValue).value_or("");
}

} // namespace glimmerly

#include "hotkeys/model/KeyCombination.h"

#include <nlohmann/json.hpp>

#include <limits>

namespace glimmerly {

namespace {

Error decodingError(DecodingError which, std::string debugDescription) {
    return {"Glimmerly.DecodingError", static_cast<int>(which), std::move(debugDescription)};
}

Result<std::int64_t> decodeInteger(const nlohmann::json& element) {
    if (!element.is_number_integer()) {
        return failure(decodingError(DecodingError::typeMismatch,
                                     std::string("Expected an integer, found ") + element.type_name()));
    }
    constexpr std::uint64_t largest = std::numeric_limits<std::int64_t>::max();
    if (element.is_number_unsigned() && element.get<std::uint64_t>() > largest) {
        return failure(decodingError(DecodingError::dataCorrupted,
                                     "The number " + element.dump() + " does not fit in 64 bits"));
    }
    return element.get<std::int64_t>();
}

} // namespace

std::string KeyCombination::encoded() const {
    return nlohmann::json::array({key.rawValue, modifiers.rawValue()}).dump();
}

Result<KeyCombination> KeyCombination::decode(std::string_view json) {
    const auto parsed = nlohmann::json::parse(json, nullptr, false);
    if (parsed.is_discarded())
        return failure(decodingError(DecodingError::dataCorrupted, "The given data was not valid JSON"));
    if (!parsed.is_array()) {
        return failure(decodingError(DecodingError::typeMismatch,
                                     std::string("Expected an array, found ") + parsed.type_name()));
    }
    if (parsed.size() != 2) {
        return failure(decodingError(DecodingError::dataCorrupted,
                                     "Expected 2 encoded values, found " + std::to_string(parsed.size())));
    }
    const auto key = decodeInteger(parsed[0]);
    if (!key)
        return failure(key.error());
    const auto modifiers = decodeInteger(parsed[1]);
    if (!modifiers)
        return failure(modifiers.error());
    return KeyCombination{KeyCode{*key}, Modifiers(*modifiers)};
}

} // namespace glimmerly

#include "telemetry/FirstCharacters.h"

#include <unicode/brkiter.h>
#include <unicode/utext.h>

#include <cstdint>
#include <memory>

namespace glimmerly {

std::string_view firstCharacters(std::string_view utf8, int count) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UText, decltype([](UText* text) { utext_close(text); })> text(
        utext_openUTF8(nullptr, utf8.data(), static_cast<std::int64_t>(utf8.size()), &status));
    const std::unique_ptr<icu::BreakIterator> characters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (U_SUCCESS(status))
        characters->setText(text.get(), status);
    if (U_FAILURE(status))
        return {};
    const auto end = characters->next(count); // in bytes of the text
    return end == icu::BreakIterator::DONE ? utf8 : utf8.substr(0, static_cast<std::size_t>(end));
}

} // namespace glimmerly

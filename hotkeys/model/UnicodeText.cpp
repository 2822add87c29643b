#include "hotkeys/model/UnicodeText.h"

#include <unicode/brkiter.h>
#include <unicode/unistr.h>

#include <memory>

namespace glimmerly {

namespace {

icu::UnicodeString fromUtf8(std::string_view utf8) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(utf8.data(), static_cast<int>(utf8.size())));
}

std::string toUtf8(const icu::UnicodeString& text) {
    std::string utf8;
    return text.toUTF8String(utf8);
}

} // namespace

// The root locale: what a key is called must not depend on the language of the user's session.
std::string capitalized(std::string_view utf8) {
    return toUtf8(fromUtf8(utf8).toTitle(nullptr, icu::Locale::getRoot()));
}

std::string lowercased(std::string_view utf8) {
    return toUtf8(fromUtf8(utf8).toLower(icu::Locale::getRoot()));
}

int characterCount(std::string_view utf8) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> characters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status))
        return 0;
    const icu::UnicodeString text = fromUtf8(utf8);
    characters->setText(text);
    int count = 0;
    while (characters->next() != icu::BreakIterator::DONE)
        ++count;
    return count;
}

} // namespace glimmerly

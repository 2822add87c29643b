#include "platform/linux/updates/feed/VersionOrder.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

namespace glimmerly {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0 && static_cast<unsigned char>(c) < 0x80;
}

/// A run of digits without leading zeros, or of letters in lower case. A number is older than a word.
struct Piece {
    enum class Kind { number, word } kind;
    std::size_t digits; ///< of a number: the one with more is the larger
    std::string text;

    auto operator<=>(const Piece&) const = default;
};

struct Version {
    std::vector<Piece> release;    ///< numbers, the last one not 0
    std::vector<Piece> preRelease; ///< empty: it is the release
};

template <typename Predicate>
std::string_view takeWhile(std::string_view& text, Predicate predicate) {
    const auto end = std::ranges::find_if_not(text, predicate) - text.begin();
    const std::string_view taken = text.substr(0, static_cast<std::size_t>(end));
    text.remove_prefix(taken.size());
    return taken;
}

Piece number(std::string_view digits) {
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return {Piece::Kind::number, digits.size(), std::string(digits)};
}

Piece word(std::string_view letters) {
    std::string lower(letters);
    std::ranges::transform(lower, lower.begin(), [](unsigned char c) { return std::tolower(c); });
    return {Piece::Kind::word, 0, std::move(lower)};
}

Version parse(std::string_view text) {
    Version version;
    text = text.substr(0, text.find('+'));
    if (text.size() > 1 && (text[0] == 'v' || text[0] == 'V') && isDigit(text[1]))
        text.remove_prefix(1);
    bool isPreRelease = false;
    while (!text.empty()) {
        if (isDigit(text.front())) {
            (isPreRelease ? version.preRelease : version.release).push_back(number(takeWhile(text, isDigit)));
        } else if (isLetter(text.front())) {
            isPreRelease = true;
            version.preRelease.push_back(word(takeWhile(text, isLetter)));
        } else {
            isPreRelease = isPreRelease || text.front() == '-';
            text.remove_prefix(1);
        }
    }
    while (!version.release.empty() && version.release.back().text.empty())
        version.release.pop_back();
    return version;
}

std::weak_ordering compare(const std::vector<Piece>& a, const std::vector<Piece>& b) {
    return std::lexicographical_compare_three_way(a.begin(), a.end(), b.begin(), b.end());
}

} // namespace

std::weak_ordering compareVersions(std::string_view left, std::string_view right) {
    const Version a = parse(left);
    const Version b = parse(right);
    if (const auto order = compare(a.release, b.release); order != 0)
        return order;
    if (a.preRelease.empty() || b.preRelease.empty())
        return a.preRelease.empty() <=> b.preRelease.empty();
    return compare(a.preRelease, b.preRelease);
}

} // namespace glimmerly

#include "diagnostics/LogPruning.h"

#include "base/Utf8.h"
#include "diagnostics/LogLine.h"

#include <algorithm>

namespace glimmerly {

namespace {

/// White space, line breaks and control characters.
bool isTrimmed(char32_t c) {
    return c <= 0x20 || (c >= 0x7f && c <= 0xa0) || c == 0x1680 || (c >= 0x2000 && c <= 0x200a) ||
           c == 0x2028 || c == 0x2029 || c == 0x202f || c == 0x205f || c == 0x3000;
}

/// The last character of well-formed `text`, as its bytes.
std::string_view lastCharacter(std::string_view text) {
    std::size_t start = text.size() - 1;
    while (start > 0 && (static_cast<unsigned char>(text[start]) & 0xc0) == 0x80)
        --start;
    return text.substr(start);
}

std::string_view trimmed(std::string_view text) {
    for (std::string_view rest = text; !text.empty(); text = rest) {
        if (!isTrimmed(*takeUtf8(rest)))
            break;
    }
    while (!text.empty()) {
        std::string_view last = lastCharacter(text);
        const std::size_t length = last.size();
        if (!isTrimmed(*takeUtf8(last)))
            break;
        text.remove_suffix(length);
    }
    return text;
}

std::optional<UtcTime> timeOf(std::string_view line) {
    const auto decoded = decodeLogLine(line);
    if (!decoded)
        return std::nullopt;
    if (const auto time = parseIso8601(decoded->ts, Iso8601Form::milliseconds))
        return time;
    return parseIso8601(decoded->ts, Iso8601Form::seconds);
}

} // namespace

std::optional<PrunedLog> pruneLog(std::string_view text, UtcTime cutoff) {
    if (text.empty() || !isUtf8(text))
        return std::nullopt;
    PrunedLog pruned;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size());
        const std::string_view line = trimmed(text.substr(0, length));
        text.remove_prefix(std::min(length + 1, text.size()));
        if (line.empty())
            continue;
        const auto time = timeOf(line);
        if (!time || *time < cutoff)
            continue;
        pruned.text.append(line).push_back('\n');
        pruned.oldest = std::min(pruned.oldest, *time);
    }
    return pruned;
}

} // namespace glimmerly

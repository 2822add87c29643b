#include "base/Iso8601.h"

namespace glimmerly {

namespace {

using namespace std::chrono;

/// The digits stand for numbers, every other character for itself.
constexpr std::string_view patternOf(Iso8601Form form) {
    return form == Iso8601Form::milliseconds ? "0000-00-00T00:00:00.000Z" : "0000-00-00T00:00:00Z";
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool matches(std::string_view text, std::string_view pattern) {
    if (text.size() != pattern.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (pattern[i] == '0' ? !isDigit(text[i]) : text[i] != pattern[i])
            return false;
    }
    return true;
}

int numberAt(std::string_view text, std::size_t position, std::size_t digits) {
    int value = 0;
    for (const char c : text.substr(position, digits))
        value = 10 * value + (c - '0');
    return value;
}

void putNumber(std::string& text, std::size_t position, std::size_t digits, long value) {
    for (std::size_t i = digits; i-- > 0; value /= 10)
        text[position + i] = static_cast<char>('0' + value % 10);
}

} // namespace

std::string formatIso8601(UtcTime time, Iso8601Form form) {
    const auto day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss clock(time - day);
    std::string text(patternOf(form));
    putNumber(text, 0, 4, static_cast<int>(date.year()));
    putNumber(text, 5, 2, static_cast<long>(static_cast<unsigned>(date.month())));
    putNumber(text, 8, 2, static_cast<long>(static_cast<unsigned>(date.day())));
    putNumber(text, 11, 2, clock.hours().count());
    putNumber(text, 14, 2, clock.minutes().count());
    putNumber(text, 17, 2, clock.seconds().count());
    if (form == Iso8601Form::milliseconds)
        putNumber(text, 20, 3, clock.subseconds().count());
    return text;
}

std::optional<UtcTime> parseIso8601(std::string_view text, Iso8601Form form) {
    if (!matches(text, patternOf(form)))
        return std::nullopt;
    const auto part = [&](std::size_t position, std::size_t digits = 2) {
        return numberAt(text, position, digits);
    };
    const year_month_day date(year(part(0, 4)), month(static_cast<unsigned>(part(5))),
                              day(static_cast<unsigned>(part(8))));
    const hours hour(part(11));
    const minutes minute(part(14));
    const seconds second(part(17));
    const milliseconds fraction(form == Iso8601Form::milliseconds ? part(20, 3) : 0);
    if (!date.ok() || hour >= days(1) || minute >= hours(1) || second >= minutes(1))
        return std::nullopt;
    return sys_days(date) + hour + minute + second + fraction;
}

} // namespace glimmerly

#pragma once

#include <cerrno>
#include <concepts>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace glimmerly {

/// A failure as a value: who says so (`domain`), which one (`code`), and the words for it.
class Error {
public:
    Error(std::string domain, int code, std::string description)
        : domain_(std::move(domain)), code_(code), description_(std::move(description)) {}

    /// An error of the program's own: any enumeration for which an overload
    /// `Error makeError(E)` is found by argument-dependent lookup.
    template <typename E>
        requires std::is_enum_v<E>
    Error(E ownCase) : Error(makeError(ownCase)) {} // NOLINT(google-explicit-constructor): that is its use

    /// An error of the operating system, from an `errno` value; `what` names the failed step.
    [[nodiscard]] static Error posix(int errnoValue, std::string_view what);

    [[nodiscard]] const std::string& domain() const { return domain_; }
    [[nodiscard]] int code() const { return code_; }
    /// A sentence for a person; what `errorSummary` of a log line holds.
    [[nodiscard]] const std::string& description() const { return description_; }
    [[nodiscard]] const std::optional<std::string>& failureReason() const { return failureReason_; }
    [[nodiscard]] const Error* underlying() const { return underlying_.get(); }

    [[nodiscard]] Error withFailureReason(std::string reason) &&;
    [[nodiscard]] Error withUnderlying(Error cause) &&;

private:
    std::string domain_;
    int code_;
    std::string description_;
    std::optional<std::string> failureReason_;
    std::shared_ptr<const Error> underlying_;
};

/// An error enumeration's own form: `domain` is the qualified type name, the code the case's ordinal.
template <typename E>
    requires std::is_enum_v<E>
[[nodiscard]] Error enumError(std::string_view domain, E ownCase) {
    const int ordinal = static_cast<int>(ownCase);
    return {std::string(domain), ordinal,
            "The operation couldn’t be completed. (" + std::string(domain) + " error " +
                std::to_string(ordinal) + ".)"};
}

} // namespace glimmerly

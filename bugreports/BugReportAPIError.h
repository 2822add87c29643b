#pragma once

#include "base/Error.h"

#include <optional>
#include <string>
#include <variant>

namespace glimmerly {

/// What the service answered, or why it could not be asked.
class BugReportAPIError {
public:
    /// A status outside 200 to 299.
    struct HttpError {
        int status;
        std::optional<std::string> errorCode; ///< the service's own; none when its answer had none

        bool operator==(const HttpError&) const = default;
    };
    struct MissingAPIConfiguration {
        bool operator==(const MissingAPIConfiguration&) const = default;
    };
    struct InvalidBaseURL {
        bool operator==(const InvalidBaseURL&) const = default;
    };
    /// What answered does not speak HTTP. The user is told the same when nothing answered.
    struct UnexpectedResponse {
        bool operator==(const UnexpectedResponse&) const = default;
    };
    /// A status from 200 to 299 with an answer that is not the one agreed upon.
    struct DecodingFailed {
        bool operator==(const DecodingFailed&) const = default;
    };
    /// The order is that of the error's codes.
    using Case =
        std::variant<HttpError, MissingAPIConfiguration, InvalidBaseURL, UnexpectedResponse, DecodingFailed>;

    BugReportAPIError(Case ownCase) : case_(std::move(ownCase)) {} // NOLINT(google-explicit-constructor)
    template <typename C>
        requires std::constructible_from<Case, C>
    BugReportAPIError(C ownCase) : case_(std::move(ownCase)) {} // NOLINT(google-explicit-constructor)

    [[nodiscard]] const Case& asCase() const { return case_; }
    /// What to tell the user.
    [[nodiscard]] std::string message() const;
    bool operator==(const BugReportAPIError&) const = default;

private:
    Case case_;
};

/// With the message as its description.
[[nodiscard]] Error makeError(const BugReportAPIError& error);

} // namespace glimmerly

#pragma once

#include "base/Result.h"

#include <optional>
#include <string>
#include <string_view>

namespace glimmerly {

struct BugReportRequestBody {
    std::string title;
    std::string email; ///< empty when the user left it blank
    std::string description;
};

struct BugReportSuccessResponse {
    bool ok;
    std::string bugReportID;
};

/// Compact JSON, the solidus escaped; an error when a text is not UTF-8.
[[nodiscard]] Result<std::string> encode(const BugReportRequestBody& body);

/// An error unless `json` is an object with both fields, of their types.
[[nodiscard]] Result<BugReportSuccessResponse> decodeBugReportSuccess(std::string_view json);

/// The "error" of the service's error envelope; none unless `json` is one.
[[nodiscard]] std::optional<std::string> decodeBugReportErrorCode(std::string_view json);

} // namespace glimmerly

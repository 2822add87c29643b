#include "bugreports/BugReportMessages.h"

#include "base/JsonText.h"
#include "base/Utf8.h"

#include <nlohmann/json.hpp>

namespace glimmerly {

namespace {

using Json = nlohmann::json;

Error jsonError(const Json::exception& exception) {
    // It quotes the answer's last word, which is as long as the answer likes.
    constexpr std::size_t longest = 200;
    return {"JSON", exception.id, wellFormedUtf8(std::string_view(exception.what()).substr(0, longest))};
}

} // namespace

Result<std::string> encode(const BugReportRequestBody& body) {
    const Json object{{"title", body.title}, {"email", body.email}, {"description", body.description}};
    try {
        return withEscapedSolidus(object.dump());
    } catch (const Json::exception& exception) {
        return failure(jsonError(exception));
    }
}

Result<BugReportSuccessResponse> decodeBugReportSuccess(std::string_view json) {
    try {
        const Json object = Json::parse(json);
        return BugReportSuccessResponse{object.at("ok").get<bool>(),
                                        object.at("bug_report_id").get<std::string>()};
    } catch (const Json::exception& exception) {
        return failure(jsonError(exception));
    }
}

std::optional<std::string> decodeBugReportErrorCode(std::string_view json) {
    try {
        const Json object = Json::parse(json);
        (void)object.at("message").get<std::string>();
        return object.at("error").get<std::string>();
    } catch (const Json::exception&) {
        return std::nullopt; // not this service's answer
    }
}

} // namespace glimmerly

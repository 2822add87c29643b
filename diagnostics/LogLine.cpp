#include "diagnostics/LogLine.h"

#include "base/JsonText.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace glimmerly {

namespace {

using Json = nlohmann::json; // its objects keep their keys in byte order

bool takeString(const Json& object, const char* key, std::string& value) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_string())
        return false;
    value = found->get<std::string>();
    return true;
}

bool isAbsent(const Json& object, const char* key) {
    const auto found = object.find(key);
    return found == object.end() || found->is_null();
}

bool takeMetadata(const Json& object, LogLine& line) {
    if (isAbsent(object, "metadata"))
        return true;
    const Json& metadata = object["metadata"];
    if (!metadata.is_object() || !std::ranges::all_of(metadata, [](const Json& v) { return v.is_string(); }))
        return false;
    line.metadata = metadata.get<std::map<std::string, std::string>>();
    return true;
}

bool takeErrorSummary(const Json& object, LogLine& line) {
    return isAbsent(object, "errorSummary") ||
           takeString(object, "errorSummary", line.errorSummary.emplace());
}

} // namespace

std::string encodeLogLine(const LogLine& line) {
    Json object{{"ts", line.ts},
                {"level", line.level},
                {"category", line.category},
                {"message", line.message},
                {"threadName", line.threadName}};
    if (line.metadata)
        object["metadata"] = *line.metadata;
    if (line.errorSummary)
        object["errorSummary"] = *line.errorSummary;
    constexpr int compact = -1;
    return withEscapedSolidus(object.dump(compact, ' ', false, Json::error_handler_t::replace));
}

std::optional<LogLine> decodeLogLine(std::string_view text) {
    constexpr bool mayThrow = false;
    const Json object = Json::parse(text, nullptr, mayThrow);
    LogLine line;
    const bool complete =
        object.is_object() && takeString(object, "ts", line.ts) && takeString(object, "level", line.level) &&
        takeString(object, "category", line.category) && takeString(object, "message", line.message) &&
        takeString(object, "threadName", line.threadName) && takeMetadata(object, line) &&
        takeErrorSummary(object, line);
    return complete ? std::optional(std::move(line)) : std::nullopt;
}

} // namespace glimmerly

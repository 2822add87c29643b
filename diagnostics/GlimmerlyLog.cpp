#include "diagnostics/GlimmerlyLog.h"

#include <atomic>

namespace glimmerly {

namespace {

std::atomic<LogOutput*> redirectedOutput{nullptr};

std::string callerText(const GlimmerlyLog::Place& place) {
    const std::string_view file = place.file_name();
    const auto slash = file.rfind('/');
    return std::string(slash == std::string_view::npos ? file : file.substr(slash + 1)) + ":" +
           std::to_string(place.line());
}

void submit(GlimmerlyLog::Level level, std::string_view category, std::string_view message,
            GlimmerlyLog::Metadata metadata, const std::optional<Error>& error,
            const GlimmerlyLog::Place& place) {
    metadata.try_emplace("caller", callerText(place));
    std::optional<std::string> errorSummary;
    if (error) {
        errorSummary = error->description();
        metadata.try_emplace("errorDomain", error->domain());
        metadata.try_emplace("errorCode", std::to_string(error->code()));
    }
    LogRecord record{level, std::string(category), std::string(message), std::move(metadata),
                     std::move(errorSummary)};
    if (LogOutput* output = redirectedOutput.load())
        output->write(std::move(record));
}

} // namespace

void GlimmerlyLog::debug(std::string_view category, std::string_view message, Metadata metadata,
                         Place place) {
    submit(Level::debug, category, message, std::move(metadata), {}, place);
}

void GlimmerlyLog::info(std::string_view category, std::string_view message, Metadata metadata, Place place) {
    submit(Level::info, category, message, std::move(metadata), {}, place);
}

void GlimmerlyLog::notice(std::string_view category, std::string_view message, Metadata metadata,
                          Place place) {
    submit(Level::notice, category, message, std::move(metadata), {}, place);
}

void GlimmerlyLog::warning(std::string_view category, std::string_view message, Metadata metadata,
                           const std::optional<Error>& error, Place place) {
    submit(Level::warning, category, message, std::move(metadata), error, place);
}

void GlimmerlyLog::error(std::string_view category, std::string_view message, Metadata metadata,
                         const std::optional<Error>& error, Place place) {
    submit(Level::error, category, message, std::move(metadata), error, place);
}

void GlimmerlyLog::fault(std::string_view category, std::string_view message, Metadata metadata,
                         Place place) {
    submit(Level::fault, category, message, std::move(metadata), {}, place);
}

void GlimmerlyLog::redirect(LogOutput* output) {
    redirectedOutput = output;
}

} // namespace glimmerly

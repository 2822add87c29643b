#include "diagnostics/GlimmerlyLog.h"

#include "diagnostics/GlimmerlyLogSink.h"
#include "platform/threads/Threads.h"

#include <atomic>

namespace glimmerly {

namespace {

std::atomic<LogOutput*> redirectedOutput{nullptr};

LogOutput& output() {
    LogOutput* redirected = redirectedOutput.load();
    return redirected != nullptr ? *redirected : GlimmerlyLogSink::shared();
}

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
    output().write({level, std::string(category), std::string(message), threadLabel(), std::move(metadata),
                    std::move(errorSummary)});
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

void GlimmerlyLog::bootstrap() {
    output().bootstrap();
}

void GlimmerlyLog::flush() {
    output().flush();
}

std::optional<std::filesystem::path> GlimmerlyLog::eventsURL() {
    return output().eventsURL();
}

LogOutput* GlimmerlyLog::redirect(LogOutput* output) {
    return redirectedOutput.exchange(output);
}

} // namespace glimmerly

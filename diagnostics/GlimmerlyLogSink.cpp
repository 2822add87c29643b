#include "diagnostics/GlimmerlyLogSink.h"

#include "diagnostics/LogLine.h"
#include "platform/files/Directories.h"
#include "platform/threads/Threads.h"

#include <chrono>

namespace glimmerly {

namespace {

using namespace std::chrono_literals;

constexpr auto retention = 600s;
constexpr auto pruneInterval = 30s;
constexpr std::uint64_t pruneWrites = 50;

std::string_view levelText(GlimmerlyLog::Level level) {
    switch (level) {
        using enum GlimmerlyLog::Level;
    case debug:
        return "debug";
    case info:
        return "info";
    case notice:
        return "notice";
    case warning:
        return "warning";
    case error:
        return "error";
    case fault:
        return "fault";
    }
    return {};
}

LogLine lineOf(const LogRecord& record, UtcTime time) {
    return {formatIso8601(time, Iso8601Form::milliseconds),
            std::string(levelText(record.level)),
            record.category,
            record.message,
            record.threadName,
            record.metadata,
            record.errorSummary};
}

} // namespace

GlimmerlyLogSink::GlimmerlyLogSink(std::optional<std::filesystem::path> applicationSupport, WallClock clock)
    : applicationSupport_(std::move(applicationSupport)), clock_(std::move(clock)),
      queue_(std::string(bundleIdentifier) + ".log", becomeUtilityThread) {}

GlimmerlyLogSink& GlimmerlyLogSink::shared() {
    static auto* const sink = new GlimmerlyLogSink(applicationSupportDirectory());
    return *sink;
}

void GlimmerlyLogSink::write(LogRecord record) {
    queue_.async([this, line = std::move(record)] { writeLine(line); });
}

void GlimmerlyLogSink::bootstrap() {
    queue_.sync([this] { bootstrapOnce(); });
}

void GlimmerlyLogSink::flush() {
    queue_.sync([this] {
        prune();
        if (file_)
            file_->synchronize();
    });
}

std::optional<std::filesystem::path> GlimmerlyLogSink::eventsURL() {
    return queue_.sync([this] { return file_ ? std::optional(file_->path()) : std::nullopt; });
}

void GlimmerlyLogSink::writeLine(const LogRecord& record) {
    bootstrapOnce();
    if (!file_ || !file_->open())
        return;
    const WallTime now = clock_();
    const auto time = std::chrono::floor<std::chrono::milliseconds>(now);
    file_->append(encodeLogLine(lineOf(record, time)) + '\n', time);
    ++writesSincePrune_;
    if (now - lastPrune_ >= pruneInterval || writesSincePrune_ >= pruneWrites)
        prune();
}

void GlimmerlyLogSink::bootstrapOnce() {
    if (didBootstrap_)
        return;
    didBootstrap_ = true;
    file_ = resolveLocation();
    prune();
    if (file_)
        file_->open();
}

std::optional<LogFile> GlimmerlyLogSink::resolveLocation() const {
    if (!applicationSupport_ || !makeDirectories(*applicationSupport_))
        return std::nullopt;
    const auto folder = *applicationSupport_ / bundleIdentifier;
    const auto service = folder / ".svc";
    if (!makePrivateDirectory(folder) || !makePrivateDirectory(service))
        return std::nullopt;
    return LogFile(service / "events.jsonl");
}

void GlimmerlyLogSink::prune() {
    if (!file_)
        return;
    lastPrune_ = clock_();
    writesSincePrune_ = 0;
    file_->prune(std::chrono::ceil<std::chrono::milliseconds>(lastPrune_ - retention));
}

} // namespace glimmerly

#pragma once

#include "base/Error.h"
#include "diagnostics/LogCategory.h"

#include <filesystem>
#include <map>
#include <optional>
#include <source_location>
#include <string>
#include <string_view>

namespace glimmerly {

class LogOutput;

/// The log that every part of the program writes to. From any thread; never fails, never waits for the disk,
/// except the three operations that say so.
class GlimmerlyLog {
public:
    GlimmerlyLog() = delete;

    enum class Level { debug, info, notice, warning, error, fault };

    /// Extra key and value pairs of a line. "caller", and with an error "errorDomain" and "errorCode", are
    /// added unless the caller put its own there.
    using Metadata = std::map<std::string, std::string>;
    using Place = std::source_location;

    static void debug(std::string_view category, std::string_view message, Metadata metadata = {},
                      Place place = Place::current());
    static void info(std::string_view category, std::string_view message, Metadata metadata = {},
                     Place place = Place::current());
    static void notice(std::string_view category, std::string_view message, Metadata metadata = {},
                       Place place = Place::current());
    static void warning(std::string_view category, std::string_view message, Metadata metadata = {},
                        const std::optional<Error>& error = {}, Place place = Place::current());
    static void error(std::string_view category, std::string_view message, Metadata metadata = {},
                      const std::optional<Error>& error = {}, Place place = Place::current());
    static void fault(std::string_view category, std::string_view message, Metadata metadata = {},
                      Place place = Place::current());

    /// Sets the file up before anything else is logged. Waits for the log's queue.
    static void bootstrap();
    /// Prunes and forces the file to stable storage. Waits for the log's queue.
    static void flush();
    /// Where "events.jsonl" lies; none when it could not be set up. Waits for the log's queue.
    [[nodiscard]] static std::optional<std::filesystem::path> eventsURL();

    /// Sends every further line to `output` in place of the file, until given nullptr: for tests.
    static void redirect(LogOutput* output);
};

/// One call of the log on its way to where lines are kept.
struct LogRecord {
    GlimmerlyLog::Level level{};
    std::string category;
    std::string message;
    std::optional<GlimmerlyLog::Metadata> metadata;
    std::optional<std::string> errorSummary;
};

/// Where lines go. Called from any thread.
class LogOutput {
public:
    virtual ~LogOutput() = default;
    virtual void write(LogRecord record) = 0;
};

} // namespace glimmerly

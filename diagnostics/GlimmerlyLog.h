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

    /// Sends every further call to `output` in place of the file, which nullptr stands for: for tests.
    /// Returns where they went before.
    static LogOutput* redirect(LogOutput* output);
};

/// One call of the log on its way to where lines are kept.
struct LogRecord {
    GlimmerlyLog::Level level{};
    std::string category;
    std::string message;
    std::string threadName; ///< of the thread that called
    std::optional<GlimmerlyLog::Metadata> metadata;
    std::optional<std::string> errorSummary;
};

/// Where lines go, and the operations of the log that go with them. Called from any thread.
class LogOutput {
public:
    virtual ~LogOutput() = default;
    /// Returns at once.
    virtual void write(LogRecord record) = 0;
    virtual void bootstrap() {}
    virtual void flush() {}
    [[nodiscard]] virtual std::optional<std::filesystem::path> eventsURL() { return std::nullopt; }
};

} // namespace glimmerly

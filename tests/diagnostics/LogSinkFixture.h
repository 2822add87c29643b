#pragma once

#include "base/Iso8601.h"
#include "diagnostics/GlimmerlyLogSink.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <sstream>

namespace glimmerly {

/// A sink over a scratch directory and a clock that only the test moves.
class LogSinkFixture : public testing::Test {
public:
    static LogRecord record(std::string message) {
        return {GlimmerlyLog::Level::info,
                "Overlay",
                std::move(message),
                "main",
                GlimmerlyLog::Metadata{{"caller", "a.cpp:1"}},
                {}};
    }

protected:
    static constexpr WallTime start{std::chrono::sys_days(std::chrono::year(2026) / 11 / 16) +
                                    std::chrono::hours(17)};

    WallClock clock() {
        return [this] { return start + std::chrono::seconds(seconds_.load()); };
    }
    void advance(std::chrono::seconds time) { seconds_ += time.count(); }

    /// A whole line, with its line feed, as if it had been written `age` before `start`.
    static std::string lineOfAge(std::chrono::seconds age, const std::string& message = "planted") {
        const auto time = std::chrono::floor<std::chrono::milliseconds>(start - age);
        return R"({"category":"c","level":"info","message":")" + message + R"(","threadName":"main","ts":")" +
               formatIso8601(time, Iso8601Form::milliseconds) + "\"}\n";
    }

    std::filesystem::path folder() const { return scratch_.path() / "app.glimmerly.Glimmerly" / ".svc"; }
    std::filesystem::path file() const { return folder() / "events.jsonl"; }
    std::string content() const { return contentOf(file()); }
    std::vector<std::string> lines() const {
        std::istringstream stream(content());
        std::vector<std::string> found;
        for (std::string line; std::getline(stream, line);)
            found.push_back(line);
        return found;
    }
    /// Puts a file there before the sink looks for one.
    void plant(const std::string& content) {
        std::filesystem::create_directories(folder());
        writeContent(file(), content);
    }

    ScratchDirectory scratch_;
    std::atomic<std::int64_t> seconds_ = 0;
};

} // namespace glimmerly

#pragma once

#include "diagnostics/GlimmerlyLog.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace glimmerly {

/// Holds every line logged during its life instead of the file.
class LogCapture : public LogOutput {
public:
    LogCapture() : previous_(GlimmerlyLog::redirect(this)) {}
    ~LogCapture() override { GlimmerlyLog::redirect(previous_); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    void write(LogRecord record) override {
        const std::lock_guard lock(mutex_);
        records_.push_back(std::move(record));
    }

    [[nodiscard]] std::vector<LogRecord> records() const {
        const std::lock_guard lock(mutex_);
        return records_;
    }
    /// The lines with that message, in order.
    [[nodiscard]] std::vector<LogRecord> withMessage(std::string_view message) const {
        std::vector<LogRecord> found;
        std::ranges::copy_if(records(), std::back_inserter(found),
                             [&](const LogRecord& record) { return record.message == message; });
        return found;
    }

private:
    LogOutput* previous_;
    mutable std::mutex mutex_;
    std::vector<LogRecord> records_;
};

} // namespace glimmerly

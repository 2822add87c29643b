#pragma once

#include "base/Clock.h"
#include "base/SerialQueue.h"
#include "diagnostics/GlimmerlyLog.h"
#include "diagnostics/LogFile.h"

#include <cstdint>

namespace glimmerly {

/// Writes the log to "events.jsonl" on a queue of its own and keeps its last ten minutes. No failure leaves
/// it: a line that cannot be written is lost.
class GlimmerlyLogSink final : public LogOutput {
public:
    /// The file lies in the folder ".svc" of the program's folder in `applicationSupport`, both made when
    /// missing; without that directory every line is dropped. `clock` is read on the queue.
    explicit GlimmerlyLogSink(std::optional<std::filesystem::path> applicationSupport,
                              WallClock clock = systemClock());

    /// The process's own, in the user's application support directory; never destroyed.
    [[nodiscard]] static GlimmerlyLogSink& shared();

    void write(LogRecord record) override;
    void bootstrap() override;
    void flush() override;
    [[nodiscard]] std::optional<std::filesystem::path> eventsURL() override;

private:
    void writeLine(const LogRecord& record);
    void bootstrapOnce();
    [[nodiscard]] std::optional<LogFile> resolveLocation() const;
    void prune();

    const std::optional<std::filesystem::path> applicationSupport_;
    const WallClock clock_;
    // What follows belongs to the queue.
    std::optional<LogFile> file_;
    bool didBootstrap_ = false;
    WallTime lastPrune_{};
    std::uint64_t writesSincePrune_ = 0;

    SerialQueue queue_; // last: it ends before what its tasks use
};

} // namespace glimmerly

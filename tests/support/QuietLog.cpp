#include "diagnostics/GlimmerlyLog.h"

namespace glimmerly {
namespace {

class QuietLog : public LogOutput {
    void write(LogRecord) override {}
};

/// Lines that no test looks at go nowhere, rather than to the log of the user who runs the tests.
[[maybe_unused]] const auto* const previousOutput = GlimmerlyLog::redirect(new QuietLog);

} // namespace
} // namespace glimmerly

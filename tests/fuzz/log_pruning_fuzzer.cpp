#include "diagnostics/LogLine.h"
#include "diagnostics/LogPruning.h"
#include "tests/fuzz/Require.h"

using namespace glimmerly;

namespace {

const UtcTime cutoff = *parseIso8601("2026-11-16T17:30:00Z", Iso8601Form::seconds);

void checkLine(std::string_view text) {
    const auto line = decodeLogLine(text);
    require(line.has_value());
    require(decodeLogLine(encodeLogLine(*line)) == line);
}

} // namespace

/// What pruning keeps are whole lines in the log's form, and pruning that again keeps all of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto pruned = pruneLog({reinterpret_cast<const char*>(data), size}, cutoff);
    if (!pruned || pruned->text.empty())
        return 0;
    require(pruned->text.back() == '\n');
    for (std::string_view rest = pruned->text; !rest.empty();) {
        const std::size_t end = rest.find('\n');
        checkLine(rest.substr(0, end));
        rest.remove_prefix(end + 1);
    }
    const auto again = pruneLog(pruned->text, cutoff);
    require(again && again->text == pruned->text && again->oldest == pruned->oldest);
    require(pruned->oldest >= cutoff);
    return 0;
}

#include "diagnostics/LogFile.h"

#include "diagnostics/LogPruning.h"
#include "platform/files/AtomicFile.h"
#include "platform/files/ReadFile.h"

#include <algorithm>
#include <span>

namespace glimmerly {

namespace {

template <typename T>
std::optional<T> valueOf(Result<T> result) {
    return result ? std::optional<T>(std::move(*result)) : std::nullopt;
}

} // namespace

bool LogFile::open() {
    if (!handle_)
        handle_ = valueOf(AppendFile::open(path_));
    return handle_.has_value();
}

void LogFile::append(std::string_view line, UtcTime time) {
    if (!handle_)
        return;
    const bool known = lastLeft_ && valueOf(handle_->stamp()) == lastLeft_;
    lastLeft_.reset();
    if (handle_->append(line) && known) {
        oldest_ = std::min(oldest_, time);
        lastLeft_ = valueOf(handle_->stamp());
    }
}

bool LogFile::nothingToPrune(UtcTime cutoff) const {
    return lastLeft_ && oldest_ >= cutoff && valueOf(stampOf(path_)) == lastLeft_;
}

void LogFile::letGoUnlessInPlace() {
    const auto named = stampOf(path_);
    const auto held = handle_ ? valueOf(handle_->stamp()) : std::nullopt;
    if (!named || !held || !named->isSameFile(*held))
        handle_.reset();
}

void LogFile::prune(UtcTime cutoff) {
    if (nothingToPrune(cutoff))
        return;
    lastLeft_.reset();
    letGoUnlessInPlace();
    const auto text = readFile(path_);
    if (!text)
        return;
    const auto pruned = pruneLog(*text, cutoff);
    if (!pruned)
        return;
    // When closing fails, the next line opens the file again; the descriptor is gone either way.
    if (handle_) {
        const auto closed = handle_->close();
        handle_.reset();
        if (!closed)
            return;
    }
    const bool isCurrent =
        pruned->text == *text || writeFileAtomically(path_, std::as_bytes(std::span(pruned->text)));
    if (open() && isCurrent) {
        oldest_ = pruned->oldest;
        lastLeft_ = valueOf(handle_->stamp());
    }
}

void LogFile::synchronize() {
    if (handle_)
        (void)handle_->synchronize();
}

} // namespace glimmerly

#pragma once

#include <stdlib.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <optional>
#include <string>

namespace glimmerly {

/// An environment variable set, or taken away with nullptr, until the end of its life.
class ScopedEnvironment {
public:
    ScopedEnvironment(std::string name, const char* value) : name_(std::move(name)) {
        if (const char* old = ::getenv(name_.c_str()))
            previous_ = old;
        set(value);
    }
    ~ScopedEnvironment() { set(previous_ ? previous_->c_str() : nullptr); }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    void set(const char* value) const {
        value != nullptr ? ::setenv(name_.c_str(), value, 1) : ::unsetenv(name_.c_str());
    }
    std::string name_;
    std::optional<std::string> previous_;
};

/// The process's umask until the end of its life.
class ScopedUmask {
public:
    explicit ScopedUmask(mode_t mask) : previous_(::umask(mask)) {}
    ~ScopedUmask() { ::umask(previous_); }
    ScopedUmask(const ScopedUmask&) = delete;
    ScopedUmask& operator=(const ScopedUmask&) = delete;

private:
    mode_t previous_;
};

/// Lets no file of this process grow beyond `limit` bytes, as a full disk would.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t limit) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &previous_);
        const rlimit lowered{limit, previous_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &lowered);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &previous_);
        std::signal(SIGXFSZ, handler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit previous_{};
    void (*handler_)(int);
};

} // namespace glimmerly

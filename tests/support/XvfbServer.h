#pragma once

#include "tests/support/XServerProcess.h"

namespace glimmerly {

/// A display without a screen to look at.
class XvfbServer : public XServerProcess {
public:
    /// `screen` is width × height × depth, as in "1920x1080x24"; `options` are more words of its command
    /// line.
    explicit XvfbServer(const std::string& screen = "1280x1024x24",
                        const std::vector<std::string>& options = {})
        : XServerProcess(command(screen, options)) {}

private:
    static std::vector<std::string> command(const std::string& screen,
                                            const std::vector<std::string>& options) {
        std::vector<std::string> words{"Xvfb", "-screen", "0", screen};
        words.insert(words.end(), options.begin(), options.end());
        return words;
    }
};

} // namespace glimmerly

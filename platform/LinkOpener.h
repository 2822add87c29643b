#pragma once

#include <string>

namespace glimmerly {

/// Opens addresses in the program that the user reads such things with.
class LinkOpener {
public:
    virtual ~LinkOpener() = default;

    /// `address` is a URL, UTF-8. Does nothing when it is none, or when nothing here can open it.
    virtual void open(const std::string& address) = 0;
};

} // namespace glimmerly

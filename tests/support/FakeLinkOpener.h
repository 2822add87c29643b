#pragma once

#include "platform/LinkOpener.h"

#include <vector>

namespace glimmerly {

/// Keeps what it is to open.
class FakeLinkOpener : public LinkOpener {
public:
    void open(const std::string& address) override { opened.push_back(address); }

    std::vector<std::string> opened;
};

} // namespace glimmerly

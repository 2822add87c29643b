#pragma once

#include "platform/LinkOpener.h"

namespace glimmerly {

class QtLinkOpener : public LinkOpener {
public:
    void open(const std::string& address) override;
};

} // namespace glimmerly

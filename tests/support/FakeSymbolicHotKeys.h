#pragma once

#include "platform/SymbolicHotKeys.h"

namespace glimmerly {

/// The shortcuts of a made-up desktop.
class FakeSymbolicHotKeys : public SymbolicHotKeys {
public:
    [[nodiscard]] std::vector<SymbolicHotKey> copySymbolicHotKeys() const override { return entries; }

    std::vector<SymbolicHotKey> entries;
};

} // namespace glimmerly

#pragma once

namespace glimmerly {

/// One function object out of several, to visit a variant with a lambda for each of its cases.
template <typename... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};

} // namespace glimmerly

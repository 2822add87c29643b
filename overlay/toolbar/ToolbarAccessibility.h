#pragma once

namespace glimmerly {

/// Tells assistive technology that a toolbar is one and its handle a grip; buttons speak for themselves.
/// Later calls change nothing.
void installToolbarAccessibility();

} // namespace glimmerly

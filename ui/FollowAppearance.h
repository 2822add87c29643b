#pragma once

namespace glimmerly {

class Appearance;

/// Gives every window of the program the colours of the desktop's scheme, now and after each change. Call it
/// once, before the first window; `appearance` must live as long as the process shows windows.
void followAppearance(Appearance& appearance);

} // namespace glimmerly

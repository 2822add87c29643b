#pragma once

#include "overlay/model/SelectionHandle.h"

#include <qnamespace.h>

namespace glimmerly {

/// The cursor that shows in which direction `handle` moves.
[[nodiscard]] Qt::CursorShape cursorForSelectionHandle(SelectionHandle handle);

} // namespace glimmerly

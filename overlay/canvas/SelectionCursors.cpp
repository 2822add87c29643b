#include "overlay/canvas/SelectionCursors.h"

namespace glimmerly {

Qt::CursorShape cursorForSelectionHandle(SelectionHandle handle) {
    switch (handle) {
    case SelectionHandle::n:
    case SelectionHandle::s:
        return Qt::SizeVerCursor;
    case SelectionHandle::e:
    case SelectionHandle::w:
        return Qt::SizeHorCursor;
    case SelectionHandle::nw:
    case SelectionHandle::se:
        return Qt::SizeFDiagCursor;
    case SelectionHandle::ne:
    case SelectionHandle::sw:
        return Qt::SizeBDiagCursor;
    }
    return Qt::CrossCursor;
}

} // namespace glimmerly

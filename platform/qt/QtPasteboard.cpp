#include "platform/qt/QtPasteboard.h"

#include "platform/qt/PictureMimeData.h"

#include <QClipboard>
#include <QGuiApplication>

namespace glimmerly {

PasteboardOutcome QtPasteboard::writeImage(const Bitmap& image, Size size) {
    QClipboard& clipboard = *QGuiApplication::clipboard();
    auto* content = new PictureMimeData(image, image.width() / size.width);
    clipboard.setMimeData(content);
    // Qt does not say when the server gave the clipboard to somebody else, but then shows what they put
    // there.
    return clipboard.mimeData() == content ? PasteboardOutcome::written : PasteboardOutcome::refused;
}

} // namespace glimmerly

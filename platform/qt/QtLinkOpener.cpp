#include "platform/qt/QtLinkOpener.h"

#include "ui/QtConversions.h"

#include <QDesktopServices>
#include <QUrl>

namespace glimmerly {

void QtLinkOpener::open(const std::string& address) {
    const QUrl url(toQString(address), QUrl::StrictMode);
    if (url.isValid() && !url.isRelative())
        QDesktopServices::openUrl(url);
}

} // namespace glimmerly

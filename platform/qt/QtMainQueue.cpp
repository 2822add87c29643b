#include "platform/qt/QtMainQueue.h"

namespace glimmerly {

void QtMainQueue::post(std::function<void()> task) {
    QMetaObject::invokeMethod(&receiver_, std::move(task), Qt::QueuedConnection);
}

} // namespace glimmerly

#pragma once

#include "platform/MainQueue.h"

#include <QObject>

namespace glimmerly {

/// The main queue as posted events of Qt's event loop. Made on the main thread; tasks that have not run when
/// it is destroyed are dropped.
class QtMainQueue : public MainQueue {
public:
    void post(std::function<void()> task) override;

private:
    QObject receiver_;
};

} // namespace glimmerly

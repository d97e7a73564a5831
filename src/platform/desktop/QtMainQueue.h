#pragma once

#include "platform/MainQueue.h"

#include <QObject>

namespace tapalong {

/// The main queue as Qt's event loop. To be made on the main thread; whoever posts from another thread must have
/// stopped before this object goes. Work that has not run by then is dropped.
class QtMainQueue final : public MainQueue {
public:
    void async(std::function<void()> work) override;
    void asyncAfter(double seconds, std::function<void()> work) override;

private:
    QObject m_receiver; ///< lives on the main thread, which makes the work run there
};

} // namespace tapalong

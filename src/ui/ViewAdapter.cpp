#include "ui/ViewAdapter.h"

namespace tapalong {

ViewAdapter::~ViewAdapter() = default;

void ViewAdapter::follow(ObservableObject& object) {
    m_subscriptions.push_back(object.objectWillChange([this] { schedule(); }));
}

void ViewAdapter::unfollowAll() {
    m_subscriptions.clear();
    m_pending = false;
}

void ViewAdapter::schedule() {
    if (!m_pending) {
        m_pending = true;
        QMetaObject::invokeMethod(this, &ViewAdapter::flush, Qt::QueuedConnection);
    }
}

void ViewAdapter::flush() {
    if (m_pending) {
        m_pending = false;
        aboutToEmit();
        emit changed();
    }
}

} // namespace tapalong

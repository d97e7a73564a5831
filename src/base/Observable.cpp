#include "base/Observable.h"

#include <algorithm>

namespace tapalong {

Subscription ObservableObject::objectWillChange(std::function<void()> observer) {
    auto kept = std::make_shared<Subscription::Observer>(std::move(observer));
    m_observers.push_back(kept);
    return Subscription(std::move(kept));
}

void ObservableObject::sendObjectWillChange() {
    std::erase_if(m_observers, [](const auto& observer) { return observer.expired(); });
    // A copy, because an observer may subscribe and so grow the list under our feet.
    const auto observers = m_observers;
    for (const auto& weak : observers) {
        if (const auto observer = weak.lock()) {
            (*observer)();
        }
    }
}

} // namespace tapalong

#include "platform/NotificationCenter.h"

#include <algorithm>

namespace tapalong {

void NotificationCenter::post(std::string_view name) {
    std::vector<ObserverToken> toCall;
    for (const auto& observer : m_observers) {
        if (observer.name == name) {
            toCall.push_back(observer.token);
        }
    }
    for (const auto token : toCall) {
        const auto found = std::find_if(m_observers.begin(), m_observers.end(),
                                        [token](const Observer& observer) { return observer.token == token; });
        if (found != m_observers.end()) {
            const auto block = found->block; // the list may move while the block runs
            block();
        }
    }
}

ObserverToken NotificationCenter::addObserver(std::string_view name, std::function<void()> block) {
    const auto token = static_cast<ObserverToken>(++m_lastToken);
    m_observers.push_back({token, std::string(name), std::move(block)});
    return token;
}

void NotificationCenter::removeObserver(ObserverToken token) {
    std::erase_if(m_observers, [token](const Observer& observer) { return observer.token == token; });
}

} // namespace tapalong

#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tapalong {

enum class ObserverToken : std::uint64_t {};

/// Named announcements within the process, without sender or payload. Main thread only. Nothing in it depends on a
/// desktop, so this one implementation serves every platform; the calls are virtual for those that record them.
class NotificationCenter {
public:
    virtual ~NotificationCenter() = default;

    /// Calls the observers of `name` in the order of their registration, before it returns. One added meanwhile is
    /// not called for this post, one removed meanwhile neither.
    virtual void post(std::string_view name);

    [[nodiscard]] virtual ObserverToken addObserver(std::string_view name, std::function<void()> block);

    /// Removing a token twice does nothing.
    virtual void removeObserver(ObserverToken token);

    [[nodiscard]] std::size_t observerCount() const { return m_observers.size(); }

private:
    struct Observer {
        ObserverToken token;
        std::string name;
        std::function<void()> block;
    };

    std::vector<Observer> m_observers;
    std::uint64_t m_lastToken = 0;
};

} // namespace tapalong

#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tapalong {

class ObservableObject;

/// A value whose lifetime is the subscription: destroying or assigning over it ends the calls.
/// It may outlive the object that it observes.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    Subscription(Subscription&&) noexcept = default;
    Subscription& operator=(Subscription&&) noexcept = default;
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() = default;

private:
    friend class ObservableObject;
    using Observer = std::function<void()>;
    explicit Subscription(std::shared_ptr<Observer> observer) : m_observer(std::move(observer)) {}

    std::shared_ptr<Observer> m_observer;
};

/// Tells its observers that it is about to change. An observer that wants the new value looks later, on its next
/// turn of the main queue; that also folds several changes into one redraw.
class ObservableObject {
public:
    ObservableObject() = default;
    ObservableObject(const ObservableObject&) = delete;
    ObservableObject& operator=(const ObservableObject&) = delete;

    /// `observer` runs before each change, on the thread that makes it, for as long as the result lives.
    Subscription objectWillChange(std::function<void()> observer);

    /// Calls every observer in the order of subscription. One that subscribes meanwhile waits for the next change;
    /// one whose subscription ends meanwhile is not called any more.
    void sendObjectWillChange();

protected:
    ~ObservableObject() = default;

private:
    std::vector<std::weak_ptr<Subscription::Observer>> m_observers;
};

/// A property that announces itself through its owner before its value changes.
template <class T> class Published {
public:
    Published(ObservableObject& owner, T initial) : m_owner(owner), m_value(std::move(initial)) {}

    [[nodiscard]] const T& get() const { return m_value; }

    void set(T value) {
        m_owner.sendObjectWillChange();
        m_value = std::move(value);
    }

    /// Changes the value in place, announced once.
    template <class Change> void mutate(Change change) {
        m_owner.sendObjectWillChange();
        change(m_value);
    }

private:
    ObservableObject& m_owner;
    T m_value;
};

} // namespace tapalong

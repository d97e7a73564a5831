#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace tapalong {

/// A callback that holds its owner weakly: invokes `action` with the owner and whatever it is called with, and does
/// nothing once the owner is gone. `action` may be a member function.
template <class Owner, class Action> [[nodiscard]] auto whileAlive(std::weak_ptr<Owner> owner, Action action) {
    return [owner = std::move(owner), action = std::move(action)](auto&&... arguments) {
        if (const auto self = owner.lock()) {
            std::invoke(action, *self, std::forward<decltype(arguments)>(arguments)...);
        }
    };
}

} // namespace tapalong

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace tapalong {

/// A stored value with its type: a whole number stays a whole number.
using DefaultsValue = std::variant<bool, std::int64_t, double, std::string>;

/// Typed values that survive restarts, one per key.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// None while the key was never written.
    [[nodiscard]] virtual std::optional<DefaultsValue> value(std::string_view key) const = 0;

    /// Written through before it returns. When that fails, the value holds for this run all the same and the user is
    /// told through Notices.
    virtual void setValue(std::string_view key, DefaultsValue value) = 0;
};

} // namespace tapalong

#pragma once

#include "base/Observable.h"
#include "platform/UserDefaults.h"
#include "settings/ScreenCorner.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace tapalong {

/// How a preference's type is kept among the defaults. A stored value of another type reads as none.
template <class T> struct StoredAs {
    static DefaultsValue encode(T value) { return DefaultsValue(std::move(value)); }
    static std::optional<T> decode(const DefaultsValue& stored) {
        const auto* value = std::get_if<T>(&stored);
        return value != nullptr ? std::optional(*value) : std::nullopt;
    }
};

/// Any number serves: a hand-edited 72 is as good as 72.0.
template <> struct StoredAs<double> {
    static DefaultsValue encode(double value) { return {value}; }
    static std::optional<double> decode(const DefaultsValue& stored) {
        if (const auto* whole = std::get_if<std::int64_t>(&stored)) {
            return static_cast<double>(*whole);
        }
        const auto* value = std::get_if<double>(&stored);
        return value != nullptr ? std::optional(*value) : std::nullopt;
    }
};

template <> struct StoredAs<ScreenCorner> {
    static DefaultsValue encode(ScreenCorner corner) { return std::string(rawValue(corner)); }
    static std::optional<ScreenCorner> decode(const DefaultsValue& stored) {
        const auto* text = std::get_if<std::string>(&stored);
        return text != nullptr ? cornerFromRawValue(*text) : std::nullopt;
    }
};

/// One persisted setting, and the binding of whatever control edits it. Nothing is cached: each read asks the
/// defaults, each write goes through to them at once. No range is enforced here.
template <class T> class Preference {
public:
    Preference(ObservableObject& owner, UserDefaults& defaults, std::string key, T defaultValue)
        : m_owner(owner), m_defaults(defaults), m_key(std::move(key)), m_defaultValue(std::move(defaultValue)) {}

    [[nodiscard]] T get() const {
        const auto stored = m_defaults.value(m_key);
        return (stored ? StoredAs<T>::decode(*stored) : std::nullopt).value_or(m_defaultValue);
    }

    /// Observers of the store are told before the value changes.
    void set(T value) {
        m_owner.sendObjectWillChange();
        m_defaults.setValue(m_key, StoredAs<T>::encode(std::move(value)));
    }

    [[nodiscard]] const std::string& key() const { return m_key; }

private:
    ObservableObject& m_owner;
    UserDefaults& m_defaults;
    std::string m_key;
    T m_defaultValue;
};

} // namespace tapalong

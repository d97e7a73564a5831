#pragma once

#include "platform/Biometrics.h"
#include "platform/InputLimits.h"
#include "platform/Notices.h"
#include "platform/NotificationCenter.h"
#include "platform/RandomSource.h"
#include "platform/StandardOutput.h"
#include "platform/SystemSounds.h"
#include "platform/UserDefaults.h"
#include "platform/simulated/EffectLog.h"

#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace tapalong::simulated {

/// Records posts and registrations on their way to the real thing.
class SimulatedNotificationCenter final : public NotificationCenter {
public:
    explicit SimulatedNotificationCenter(EffectLog& effects) : m_effects(effects) {}

    void post(std::string_view name) override;
    [[nodiscard]] ObserverToken addObserver(std::string_view name, std::function<void()> block) override;
    void removeObserver(ObserverToken token) override;

private:
    EffectLog& m_effects;
};

/// A fingerprint reader that answers when the test says so.
class SimulatedBiometrics final : public Biometrics {
public:
    explicit SimulatedBiometrics(EffectLog& effects) : m_effects(effects) {}

    [[nodiscard]] std::shared_ptr<BiometricContext> makeContext() override;

    /// Answers the oldest pending request; false when none is pending.
    bool reply(bool success, std::optional<BiometricError> error);
    [[nodiscard]] std::size_t pendingCount() const { return m_pending.size(); }

    bool available = false;
    std::optional<BiometricError> unavailableError = BiometricError{-6, "No fingerprint reader."};

private:
    class Context;

    EffectLog& m_effects;
    std::deque<BiometricContext::Reply> m_pending;
};

/// Named sounds that are written down instead of heard.
class SimulatedSounds final : public SystemSounds {
public:
    explicit SimulatedSounds(EffectLog& effects) : m_effects(effects) {}

    [[nodiscard]] std::unique_ptr<SystemSound> soundNamed(std::string_view name) override;

    std::set<std::string, std::less<>> names{"Tink", "Pop", "Frog", "Funk", "Glass", "Morse"};

private:
    EffectLog& m_effects;
};

/// Defaults in memory. They outlive an application, as the real ones do.
class SimulatedDefaults final : public UserDefaults {
public:
    explicit SimulatedDefaults(EffectLog& effects) : m_effects(effects) {}

    [[nodiscard]] std::optional<DefaultsValue> value(std::string_view key) const override;
    void setValue(std::string_view key, DefaultsValue value) override;

    std::map<std::string, DefaultsValue, std::less<>> stored;

private:
    EffectLog& m_effects;
};

/// A seeded generator; numbers put into `scripted` come first.
class SimulatedRandom final : public RandomSource {
public:
    explicit SimulatedRandom(std::uint64_t seed) : m_state(seed) {}

    [[nodiscard]] std::uint64_t uniform(std::uint64_t bound) override;
    [[nodiscard]] std::uint64_t next() override;

    std::deque<std::uint64_t> scripted; ///< answers of uniform(), used up from the front

private:
    std::uint64_t m_state;
};

class SimulatedOutput final : public StandardOutput {
public:
    explicit SimulatedOutput(EffectLog& effects) : m_effects(effects) {}

    void print(std::string_view line) override { m_effects.record("print " + std::string(line)); }

private:
    EffectLog& m_effects;
};

class SimulatedNotices final : public Notices {
public:
    [[nodiscard]] std::vector<std::string> notices() const override { return m_sentences; }
    void set(std::vector<std::string> sentences);

private:
    std::vector<std::string> m_sentences;
};

/// A computer below which nothing is open until a test says so.
class SimulatedInputLimits final : public InputLimits {
public:
    [[nodiscard]] std::vector<InputLimit> openLimits() const override { return m_open; }
    void lookAgain() override { ++looks; }
    void set(std::vector<InputLimit> open);

    int looks = 0; ///< how often it was told to look

private:
    std::vector<InputLimit> m_open;
};

} // namespace tapalong::simulated

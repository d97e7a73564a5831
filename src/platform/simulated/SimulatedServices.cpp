#include "platform/simulated/SimulatedServices.h"

#include "base/Fatal.h"

#include <utility>

namespace tapalong::simulated {

void SimulatedNotificationCenter::post(std::string_view name) {
    m_effects.record("notification.post " + std::string(name));
    NotificationCenter::post(name);
}

ObserverToken SimulatedNotificationCenter::addObserver(std::string_view name, std::function<void()> block) {
    m_effects.record("notification.addObserver " + std::string(name));
    return NotificationCenter::addObserver(name, std::move(block));
}

void SimulatedNotificationCenter::removeObserver(ObserverToken token) {
    m_effects.record("notification.removeObserver");
    NotificationCenter::removeObserver(token);
}

class SimulatedBiometrics::Context final : public BiometricContext {
public:
    explicit Context(SimulatedBiometrics& reader) : m_reader(reader) {}

    void setLocalizedFallbackTitle(std::string title) override {
        m_reader.m_effects.record("biometrics.fallbackTitle \"" + title + "\"");
    }

    [[nodiscard]] bool canEvaluatePolicy(BiometricPolicy policy, std::optional<BiometricError>& error) override {
        m_reader.m_effects.record("biometrics.canEvaluate " + std::to_string(static_cast<int>(policy)));
        if (!m_reader.available) {
            error = m_reader.unavailableError;
        }
        return m_reader.available;
    }

    void evaluatePolicy(BiometricPolicy policy, std::string localizedReason, Reply reply) override {
        m_reader.m_effects.record("biometrics.evaluate " + std::to_string(static_cast<int>(policy)) + " \"" +
                                  localizedReason + "\"");
        m_reader.m_pending.push_back(std::move(reply));
    }

private:
    SimulatedBiometrics& m_reader;
};

std::shared_ptr<BiometricContext> SimulatedBiometrics::makeContext() {
    return std::make_shared<Context>(*this);
}

bool SimulatedBiometrics::reply(bool success, std::optional<BiometricError> error) {
    if (m_pending.empty()) {
        return false;
    }
    const auto answer = std::move(m_pending.front());
    m_pending.pop_front();
    answer(success, std::move(error));
    return true;
}

namespace {

class Sound final : public SystemSound {
public:
    Sound(EffectLog& effects, std::string name) : m_effects(effects), m_name(std::move(name)) {}

    void play() override { m_effects.record("sound.play " + m_name); }
    void stop() override { m_effects.record("sound.stop " + m_name); }

private:
    EffectLog& m_effects;
    std::string m_name;
};

} // namespace

std::unique_ptr<SystemSound> SimulatedSounds::soundNamed(std::string_view name) {
    m_effects.record("sound.load " + std::string(name));
    return names.contains(name) ? std::make_unique<Sound>(m_effects, std::string(name)) : nullptr;
}

std::optional<DefaultsValue> SimulatedDefaults::value(std::string_view key) const {
    const auto found = stored.find(key);
    return found != stored.end() ? std::optional(found->second) : std::nullopt;
}

void SimulatedDefaults::setValue(std::string_view key, DefaultsValue value) {
    m_effects.record("defaults.set " + std::string(key));
    stored.insert_or_assign(std::string(key), std::move(value));
}

std::uint64_t SimulatedRandom::uniform(std::uint64_t bound) {
    verify(bound > 0, "a random number needs a positive bound");
    if (!scripted.empty()) {
        const auto answer = scripted.front();
        scripted.pop_front();
        return answer % bound;
    }
    return next() % bound; // the bias is below what any test could see
}

std::uint64_t SimulatedRandom::next() {
    // SplitMix64: a counter and a mixing function, the same on every machine.
    m_state += 0x9E3779B97F4A7C15;
    std::uint64_t mixed = m_state;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EB;
    return mixed ^ (mixed >> 31U);
}

void SimulatedNotices::set(std::vector<std::string> sentences) {
    sendObjectWillChange();
    m_sentences = std::move(sentences);
}

void SimulatedInputLimits::set(std::vector<InputLimit> open) {
    sendObjectWillChange();
    m_open = std::move(open);
}

} // namespace tapalong::simulated

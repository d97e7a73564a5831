#include "platform/linux/limits/InputDevices.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string_view>
#include <vector>

namespace tapalong {

namespace {

/// A set of codes as the kernel writes it: long words in hexadecimal, the highest first.
class CodeSet {
public:
    CodeSet() = default;
    explicit CodeSet(const std::string& words) {
        std::istringstream stream(words);
        for (unsigned long word = 0; stream >> std::hex >> word;) {
            m_words.push_back(word);
        }
        std::reverse(m_words.begin(), m_words.end());
    }

    [[nodiscard]] bool has(unsigned code) const {
        constexpr auto width = static_cast<unsigned>(std::numeric_limits<unsigned long>::digits);
        const auto word = code / width;
        return word < m_words.size() && ((m_words[word] >> (code % width)) & 1U) != 0;
    }

private:
    std::vector<unsigned long> m_words; ///< the lowest first
};

struct Device {
    CodeSet keys;
    CodeSet axes;
    CodeSet properties;
};

/// A tablet has a tool of its own, a touch screen is touched where it shows something.
bool isTouchpad(const Device& device) {
    return device.keys.has(BTN_TOOL_FINGER) && !device.keys.has(BTN_TOOL_PEN) && device.axes.has(ABS_X) &&
           !device.properties.has(INPUT_PROP_DIRECT);
}

void add(InputDevices& devices, const Device& device) {
    devices.hasPowerKey = devices.hasPowerKey || device.keys.has(KEY_POWER);
    devices.hasSleepKey = devices.hasSleepKey || device.keys.has(KEY_SLEEP);
    // The login service hibernates on the one that the kernel calls suspend.
    devices.hasHibernateKey = devices.hasHibernateKey || device.keys.has(KEY_SUSPEND);
    devices.hasSysRqKey = devices.hasSysRqKey || device.keys.has(KEY_SYSRQ);
    devices.hasTouchpad = devices.hasTouchpad || isTouchpad(device);
}

void readLine(Device& device, const std::string& line) {
    const auto take = [&line](std::string_view start, CodeSet& into) {
        if (line.starts_with(start)) {
            into = CodeSet(line.substr(start.size()));
        }
    };
    take("B: KEY=", device.keys);
    take("B: ABS=", device.axes);
    take("B: PROP=", device.properties);
}

} // namespace

InputDevices inputDevices(const std::optional<std::string>& list) {
    if (!list) {
        return {.hasPowerKey = true,
                .hasSleepKey = true,
                .hasHibernateKey = true,
                .hasSysRqKey = true,
                .hasTouchpad = true};
    }
    InputDevices devices;
    Device device;
    std::istringstream lines(*list);
    for (std::string line; std::getline(lines, line);) {
        readLine(device, line);
        if (line.empty()) {
            add(devices, device);
            device = {};
        }
    }
    add(devices, device);
    return devices;
}

} // namespace tapalong

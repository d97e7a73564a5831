#pragma once

#include "platform/Notices.h"

#include <map>
#include <string>
#include <vector>

namespace tapalong {

/// The notices of the running program. Whoever finds a trouble keeps one line under a key of its own.
class NoticeBoard final : public Notices {
public:
    [[nodiscard]] std::vector<std::string> notices() const override;

    /// Puts up `sentence`, in the place of an earlier one under the same key.
    void set(const std::string& key, const std::string& sentence);
    /// Taking down what is not there does nothing.
    void clear(const std::string& key);

private:
    std::map<std::string, std::string> m_sentences;
};

} // namespace tapalong

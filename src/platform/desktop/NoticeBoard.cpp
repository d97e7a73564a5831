#include "platform/desktop/NoticeBoard.h"

namespace tapalong {

std::vector<std::string> NoticeBoard::notices() const {
    std::vector<std::string> sentences;
    sentences.reserve(m_sentences.size());
    for (const auto& [key, sentence] : m_sentences) {
        sentences.push_back(sentence);
    }
    return sentences;
}

void NoticeBoard::set(const std::string& key, const std::string& sentence) {
    const auto present = m_sentences.find(key);
    if (present != m_sentences.end() && present->second == sentence) {
        return;
    }
    sendObjectWillChange();
    m_sentences[key] = sentence;
}

void NoticeBoard::clear(const std::string& key) {
    if (m_sentences.contains(key)) {
        sendObjectWillChange();
        m_sentences.erase(key);
    }
}

} // namespace tapalong

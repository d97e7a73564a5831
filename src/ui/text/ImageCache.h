#pragma once

#include <QByteArray>
#include <QHash>

#include <cstddef>
#include <list>
#include <utility>

namespace tapalong {

/// Keeps what was used last, up to a total cost. One entry may exceed the bound alone.
template <class Value> class ImageCache {
public:
    explicit ImageCache(std::size_t bound) : m_bound(bound) {}

    /// The value, now the one used last, or null. Good until the next insert.
    [[nodiscard]] Value* find(const QByteArray& key) {
        const auto found = m_index.constFind(key);
        if (found == m_index.cend()) {
            return nullptr;
        }
        m_entries.splice(m_entries.begin(), m_entries, *found);
        return &m_entries.front().value;
    }

    /// The key must be new.
    Value& insert(const QByteArray& key, Value value, std::size_t cost) {
        m_entries.push_front({key, std::move(value), cost});
        m_index.insert(key, m_entries.begin());
        m_cost += cost;
        while (m_cost > m_bound && m_entries.size() > 1) {
            m_cost -= m_entries.back().cost;
            m_index.remove(m_entries.back().key);
            m_entries.pop_back();
        }
        return m_entries.front().value;
    }

    void clear() {
        m_index.clear();
        m_entries.clear();
        m_cost = 0;
    }

    [[nodiscard]] std::size_t cost() const { return m_cost; }
    [[nodiscard]] std::size_t size() const { return m_entries.size(); }

private:
    struct Entry {
        QByteArray key;
        Value value;
        std::size_t cost;
    };

    const std::size_t m_bound;
    std::size_t m_cost = 0;
    std::list<Entry> m_entries;
    QHash<QByteArray, typename std::list<Entry>::iterator> m_index;
};

} // namespace tapalong

#pragma once

#include <QList>
#include <QMultiHash>

#include <optional>
#include <utility>

namespace regalon {

/// Rows in the order of the plan, found by their keys without ever going back: of several rows with one key
/// counts the first from the row that was found last on, and that row itself can be found again. The rows in
/// front of it are lost. Whatever the keys, a whole plan costs no more than its rows and questions together.
template <typename Key>
class ForwardRows {
public:
    explicit ForwardRows(const QList<Key>& keys) {
        m_rows.reserve(keys.size());
        // Backwards: a multi-hash gives the entries of one key newest first.
        for (qsizetype row = keys.size() - 1; row >= 0; --row)
            m_rows.insert(keys.at(row), row);
    }

    std::optional<qsizetype> find(const Key& key) {
        for (auto [entry, end] = std::as_const(m_rows).equal_range(key); entry != end; ++entry) {
            if (*entry >= m_cursor)
                return m_cursor = *entry;
        }
        return std::nullopt;
    }

private:
    QMultiHash<Key, qsizetype> m_rows;
    qsizetype m_cursor = 0;
};

}  // namespace regalon

#pragma once

#include <QAbstractListModel>
#include <QVariantMap>
#include <algorithm>
#include <functional>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Screens/Models/Texts.h"

namespace stintbook {

/// Rows that have an `id`, as QML shows them by roles. What is shown changes row by row, so that views keep their
/// selection, their place and the text that is being typed.
template <typename Row> class RowModel : public QAbstractListModel {
    using ID = decltype(Row::id);

public:
    struct Role {
        QByteArray name;
        std::function<QVariant(const Row&)> value;
    };

    /// A member of the row by the name that QML knows it by.
    template <typename Value> static Role role(const char* name, Value Row::* member)
    {
        return {name, [member](const Row& row) -> QVariant {
                    if constexpr (requires { text(row.*member); })
                        return text(row.*member);
                    else
                        return row.*member;
                }};
    }

    explicit RowModel(std::vector<Role> roles, QObject* parent = nullptr)
        : QAbstractListModel(parent)
        , m_roles(std::move(roles))
    {
    }

    const std::vector<Row>& rows() const { return m_rows; }
    /// The values of a row by the roles' names.
    QVariantMap values(std::size_t row) const
    {
        QVariantMap values;
        for (const auto& role : m_roles)
            values.insert(QString::fromLatin1(role.name), role.value(m_rows[row]));
        return values;
    }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        const auto number = static_cast<std::size_t>(role - Qt::UserRole);
        if (!index.isValid() || role < Qt::UserRole || number >= m_roles.size())
            return {};
        return m_roles[number].value(m_rows[static_cast<std::size_t>(index.row())]);
    }
    QHash<int, QByteArray> roleNames() const override
    {
        QHash<int, QByteArray> names;
        for (std::size_t i = 0; i < m_roles.size(); ++i)
            names.insert(Qt::UserRole + static_cast<int>(i), m_roles[i].name);
        return names;
    }

    /// Of rows with one identifier the first counts.
    void show(std::vector<Row> wanted)
    {
        std::unordered_set<ID> kept;
        std::erase_if(wanted, [&](const Row& row) { return !kept.insert(row.id).second; });
        removeAllBut(kept);
        for (std::size_t at = 0; at < wanted.size(); ++at) {
            if (at < m_rows.size() && m_rows[at].id == wanted[at].id)
                replace(at, std::move(wanted[at]));
            else if (const auto from = place(wanted[at].id, at); from < m_rows.size())
                move(from, at, std::move(wanted[at]));
            else
                insert(at, wanted);
        }
    }

private:
    std::size_t place(const ID& id, std::size_t from) const
    {
        if (!m_known.contains(id))
            return m_rows.size();
        const auto found =
            std::ranges::find(m_rows.begin() + static_cast<std::ptrdiff_t>(from), m_rows.end(), id, &Row::id);
        return static_cast<std::size_t>(found - m_rows.begin());
    }

    void removeAllBut(const std::unordered_set<ID>& kept)
    {
        for (auto end = m_rows.size(); end > 0;) {
            if (kept.contains(m_rows[end - 1].id)) {
                --end;
                continue;
            }
            auto begin = end;
            while (begin > 0 && !kept.contains(m_rows[begin - 1].id))
                --begin;
            beginRemoveRows({}, static_cast<int>(begin), static_cast<int>(end) - 1);
            for (auto at = begin; at < end; ++at)
                m_known.erase(m_rows[at].id);
            m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(begin),
                         m_rows.begin() + static_cast<std::ptrdiff_t>(end));
            endRemoveRows();
            end = begin;
        }
    }

    void replace(std::size_t at, Row row)
    {
        if (m_rows[at] == row)
            return;
        m_rows[at] = std::move(row);
        const auto changed = index(static_cast<int>(at));
        Q_EMIT dataChanged(changed, changed);
    }

    void move(std::size_t from, std::size_t to, Row row)
    {
        beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {}, static_cast<int>(to));
        const auto begin = m_rows.begin();
        std::rotate(begin + static_cast<std::ptrdiff_t>(to), begin + static_cast<std::ptrdiff_t>(from),
                    begin + static_cast<std::ptrdiff_t>(from) + 1);
        endMoveRows();
        replace(to, std::move(row));
    }

    /// All new rows that stand beside each other at once.
    void insert(std::size_t at, std::vector<Row>& wanted)
    {
        auto end = at;
        while (end < wanted.size() && !m_known.contains(wanted[end].id))
            ++end;
        beginInsertRows({}, static_cast<int>(at), static_cast<int>(end) - 1);
        for (auto i = at; i < end; ++i)
            m_known.insert(wanted[i].id);
        m_rows.insert(m_rows.begin() + static_cast<std::ptrdiff_t>(at),
                      wanted.begin() + static_cast<std::ptrdiff_t>(at),
                      wanted.begin() + static_cast<std::ptrdiff_t>(end));
        endInsertRows();
    }

    std::vector<Role> m_roles;
    std::vector<Row> m_rows;
    std::unordered_set<ID> m_known;
};

} // namespace stintbook

#pragma once

#include <QAbstractListModel>
#include <QVariantMap>
#include <algorithm>
#include <functional>
#include <ranges>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Screens/Models/Texts.h"

namespace stintbook {

/// Rows that have an `id`, as QML shows them by roles. What is shown changes row by row, so that views keep their
/// selection, their place and the text that is being typed, unless all of it is to be shown in place.
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

    /// Of rows with one identifier the first counts. Takes as long as there are rows, in whatever order they were.
    void show(std::vector<Row> wanted)
    {
        removeAllBut(withoutRepetition(wanted));
        reorder(wanted);
        for (std::size_t at = 0; at < wanted.size(); ++at) {
            if (at < m_rows.size() && m_rows[at].id == wanted[at].id)
                replace(at, std::move(wanted[at]));
            else
                insert(at, wanted);
        }
    }

    /// Other rows where the present ones stand: a view keeps its items and fills them anew, instead of making new ones.
    /// Only for lists whose items hold nothing of their own, such as text that is being typed.
    void showInPlace(std::vector<Row> wanted)
    {
        withoutRepetition(wanted);
        const auto common = std::min(m_rows.size(), wanted.size());
        removeFrom(common, m_rows.size());
        std::ranges::move(wanted | std::views::take(common), m_rows.begin());
        m_known.clear();
        for (const auto& row : m_rows)
            m_known.insert(row.id);
        if (common > 0)
            Q_EMIT dataChanged(index(0), index(static_cast<int>(common) - 1));
        if (common < wanted.size())
            insert(common, wanted);
    }

private:
    /// What is left are these identifiers.
    static std::unordered_set<ID> withoutRepetition(std::vector<Row>& rows)
    {
        std::unordered_set<ID> known;
        std::erase_if(rows, [&](const Row& row) { return !known.insert(row.id).second; });
        return known;
    }

    void removeFrom(std::size_t begin, std::size_t end)
    {
        if (begin == end)
            return;
        beginRemoveRows({}, static_cast<int>(begin), static_cast<int>(end) - 1);
        for (auto at = begin; at < end; ++at)
            m_known.erase(m_rows[at].id);
        m_rows.erase(m_rows.begin() + offset(begin), m_rows.begin() + offset(end));
        endRemoveRows();
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
            removeFrom(begin, end);
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

    /// The rows that are there already, as they follow each other in what is wanted.
    void reorder(const std::vector<Row>& wanted)
    {
        std::unordered_map<ID, std::size_t> places;
        for (const auto& row : wanted) {
            if (m_known.contains(row.id))
                places.emplace(row.id, places.size());
        }
        // Where each row goes.
        std::vector<std::size_t> to;
        for (const auto& row : m_rows)
            to.push_back(places.at(row.id));
        const auto begin = to.begin();
        std::size_t first = 0;
        while (first < to.size() && to[first] == first)
            ++first;
        if (first == to.size())
            return;
        auto last = to.size() - 1;
        while (to[last] == last)
            --last;
        const auto isInOrder = [&](std::size_t from, std::size_t end) {
            return std::is_sorted(begin + offset(from), begin + offset(end));
        };
        if (to[first] == last && isInOrder(first + 1, last + 1))
            move(first, last);
        else if (to[last] == first && isInOrder(first, last))
            move(last, first);
        else
            rearrange(to);
    }

    void move(std::size_t from, std::size_t to)
    {
        const bool isDown = to > from;
        beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {},
                      static_cast<int>(isDown ? to + 1 : to));
        const auto begin = m_rows.begin();
        if (isDown)
            std::rotate(begin + offset(from), begin + offset(from) + 1, begin + offset(to) + 1);
        else
            std::rotate(begin + offset(to), begin + offset(from), begin + offset(from) + 1);
        endMoveRows();
    }

    /// Row by row it would take as long as there are pairs of rows.
    void rearrange(const std::vector<std::size_t>& to)
    {
        Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
        std::vector<Row> sorted(m_rows.size());
        for (std::size_t from = 0; from < to.size(); ++from)
            sorted[to[from]] = std::move(m_rows[from]);
        m_rows = std::move(sorted);
        const auto before = persistentIndexList();
        QModelIndexList after;
        for (const auto& entry : before)
            after.append(index(static_cast<int>(to[static_cast<std::size_t>(entry.row())])));
        changePersistentIndexList(before, after);
        Q_EMIT layoutChanged({}, VerticalSortHint);
    }

    static std::ptrdiff_t offset(std::size_t row) { return static_cast<std::ptrdiff_t>(row); }

    /// All new rows that stand beside each other at once.
    void insert(std::size_t at, std::vector<Row>& wanted)
    {
        auto end = at;
        while (end < wanted.size() && !m_known.contains(wanted[end].id))
            ++end;
        beginInsertRows({}, static_cast<int>(at), static_cast<int>(end) - 1);
        for (auto i = at; i < end; ++i)
            m_known.insert(wanted[i].id);
        m_rows.insert(m_rows.begin() + offset(at), wanted.begin() + offset(at), wanted.begin() + offset(end));
        endInsertRows();
    }

    std::vector<Role> m_roles;
    std::vector<Row> m_rows;
    std::unordered_set<ID> m_known;
};

} // namespace stintbook

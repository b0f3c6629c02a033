#pragma once

#include <QString>
#include <QStringList>
#include <set>

namespace stintbook {

/// Which of a list's rows are selected, by identifier, as lists know it: one at a time, several one by one, or a
/// stretch of them.
class RowSelection {
public:
    const std::set<QString>& ids() const { return m_ids; }
    bool contains(const QString& id) const { return m_ids.contains(id); }
    /// The row that the keyboard is at; empty for none.
    const QString& current() const { return m_current; }

    void selectOnly(const QString& id);
    /// The current row is this one; what is selected stays.
    void moveTo(const QString& id) { m_current = id; }
    void toggle(const QString& id);
    /// From where the last selection began, in the order of the list.
    void extendTo(const QString& id, const QStringList& list);
    void select(const QStringList& ids);
    /// Forgets what the list does not have any more.
    void keepOnly(const QStringList& list);

private:
    std::set<QString> m_ids;
    QString m_current;
    QString m_anchor;
};

} // namespace stintbook

#pragma once

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "Domain/PersistenceError.h"

/// Walks over stored records take them one by one, however many there are: each as it was read, or why it could
/// not be. A record that is unreadable ends no walk.
namespace stintbook {

template <typename Record> using RecordVisitor = std::function<void(Stored<Record>)>;

/// The whole list that a walk yields, unless a record of it is unreadable. `walk` takes a visitor.
template <typename Record, typename Walk> Stored<std::vector<Record>> collected(Walk walk)
{
    std::vector<Record> records;
    std::optional<PersistenceError> problem;
    walk(RecordVisitor<Record>([&](Stored<Record> record) {
        if (!record && !problem)
            problem = std::move(record).error();
        else if (record && !problem)
            records.push_back(*std::move(record));
    }));
    if (problem)
        return std::unexpected(*std::move(problem));
    return records;
}

} // namespace stintbook

#pragma once

#include <functional>

namespace stintbook {

/// What a deletion of recorded history has come to.
struct DeletedActivity {
    enum class Remains {
        /// Nothing of it is left in the store's files.
        erased,
        /// Another program was reading the store's older state: what that reads goes when the store is opened
        /// the next time.
        leftForTheNextStart,
    };

    /// Local days that held observed activity of the scope.
    int dayCount = 0;
    Remains remains = Remains::erased;

    friend bool operator==(const DeletedActivity&, const DeletedActivity&) = default;
};

/// Told how much of a deletion is done, from 0 to 1.
using DeletionProgress = std::function<void(double done)>;

} // namespace stintbook

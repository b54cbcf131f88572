#pragma once

#include <vector>

/// Shows the list: learns from it what is to be shown anew. Main thread.
class ListObserver {
public:
    virtual ~ListObserver() = default;

    /// Rows may have come, gone and changed.
    virtual void reload() = 0;
    /// Rows may have come at the end, and no other has changed.
    virtual void rowsWereAdded() = 0;
    /// What a row shows has changed.
    virtual void rowChanged(int row) = 0;
    /// The lists have lost these rows (numbers from before, in any order).
    virtual void rowsWereRemoved(std::vector<int> rows) = 0;
};

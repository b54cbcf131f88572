#include "filelist/SharedState.h"

#include <algorithm>

bool IdSet::contains(int id) const {
    return std::find(ids_.begin(), ids_.end(), id) != ids_.end();
}

void IdSet::add(int id) {
    if (!contains(id))
        ids_.push_back(id);
}

void IdSet::remove(int id) {
    ids_.erase(std::remove(ids_.begin(), ids_.end(), id), ids_.end());
}

#include "filelist/SharedState.h"

void IdSet::add(int id) {
    if (known_.insert(id).second)
        ids_.push_back(id);
}

void IdSet::removeAll(const std::vector<int>& ids) {
    size_t removed = 0;
    for (const int id : ids)
        removed += known_.erase(id);
    if (removed > 0)
        std::erase_if(ids_, [this](int id) { return !known_.contains(id); });
}

void IdSet::clear() {
    ids_.clear();
    known_.clear();
}

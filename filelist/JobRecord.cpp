#include "filelist/JobRecord.h"

#include <algorithm>

QVariant JobRecord::value(const QString& key) const {
    const QVariant* found = find(key);
    return found ? *found : QVariant();
}

std::vector<QString> JobRecord::keys() const {
    std::vector<QString> result;
    result.reserve(entries_.size());
    for (const auto& entry : entries_)
        result.push_back(entry.first);
    return result;
}

void JobRecord::set(const QString& key, const QVariant& value) {
    const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const auto& each) { return each.first == key; });
    if (entry != entries_.end())
        entry->second = value;
    else
        entries_.emplace_back(key, value);
}

const QVariant* JobRecord::find(const QString& key) const {
    const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const auto& each) { return each.first == key; });
    return entry != entries_.end() ? &entry->second : nullptr;
}

#pragma once

#include <stdexcept>
#include <string>

/// The entry at `position`; throws std::out_of_range where the list has none. Any list that can be
/// indexed; any thread.
template <typename List> [[nodiscard]] decltype(auto) entryAt(List& list, long long position) {
    if (position < 0 || position >= static_cast<long long>(list.size()))
        throw std::out_of_range("position " + std::to_string(position) + " of a list of " +
                                std::to_string(list.size()));
    return *(list.begin() + static_cast<std::ptrdiff_t>(position));
}

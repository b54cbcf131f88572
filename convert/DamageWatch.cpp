#include "convert/DamageWatch.h"

#include "media/LineEnd.h"

#include <algorithm>

namespace {

constexpr QStringView beginOfConverting = u"Stream mapping:";
constexpr QStringView shortestMark = u"error";
constexpr QStringView longestMark = u"Invalid";

bool holdsComplaint(QStringView text) {
    return text.contains(shortestMark) || text.contains(longestMark);
}

/// What matters of an unfinished line: how it begins, or that it begins otherwise, and the words
/// that its end may be the start of.
QString whatMatters(const QString& line) {
    if (line.size() <= beginOfConverting.size())
        return line;
    return (line.startsWith(beginOfConverting) ? beginOfConverting.toString() : QString(u' ')) +
           line.last(longestMark.size() - 1);
}

} // namespace

bool DamageWatch::add(QStringView text) {
    bool found = false;
    while (!text.isEmpty()) {
        const auto end = std::find_if(text.begin(), text.end(), isLineEnd);
        const QString line = open_ + text.first(end - text.begin());
        found = found || (isConverting_ && holdsComplaint(line));
        isConverting_ = isConverting_ || line.startsWith(beginOfConverting);
        open_.clear();
        if (end == text.end()) {
            open_ = whatMatters(line);
            break;
        }
        text = text.sliced(end - text.begin() + 1);
    }
    return found;
}

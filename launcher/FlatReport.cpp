#include "launcher/FlatReport.h"

namespace {

/// False where the quotes are not closed.
bool takeQuotes(std::string_view& value) {
    if (value.empty() || value.front() != '"')
        return true;
    if (value.size() < 2 || value.back() != '"')
        return false;
    value = value.substr(1, value.size() - 2);
    return true;
}

} // namespace

void forEachEntry(std::string_view report,
                  const std::function<void(std::string_view, std::string_view)>& entry) {
    for (;;) {
        const std::size_t end = report.find('\n');
        if (end == std::string_view::npos)
            return;
        const std::string_view line = report.substr(0, end);
        report.remove_prefix(end + 1);
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos)
            continue;
        std::string_view value = line.substr(equals + 1);
        if (takeQuotes(value))
            entry(line.substr(0, equals), value);
    }
}

#pragma once

#include <functional>
#include <string_view>

/// Calls `entry` for each line `key=value` of what ffprobe prints in its format "flat", in their
/// order. A value in quotes is given without them and as it stands: what is escaped (quotes, line
/// ends) stays escaped, so a value never looks like a line of its own. An unfinished line is left
/// out.
void forEachEntry(std::string_view report,
                  const std::function<void(std::string_view key, std::string_view value)>& entry);

#pragma once

/// What a message box answers, by the place of the button that was pressed.
namespace boxanswer {
inline constexpr int first = 1000;
inline constexpr int second = first + 1;
inline constexpr int third = first + 2;
inline constexpr int fourth = first + 3;
} // namespace boxanswer

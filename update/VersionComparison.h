#pragma once

class QString;

/// Whether the server's version is to be taken as newer than the local one; both are dotted decimal
/// with four parts, further parts do not count. Pure.
///
/// Kept: each step compares one part and looks at the equality of the part just before it alone, so
/// 2.1.0.0 against 1.1.5.0 is newer (1 = 1 and 0 < 5).
///
/// A part is read forgivingly: white space before it and everything after its digits are skipped, a
/// part without digits is 0, and a number too large for an int is the largest one.
///
/// Throws std::out_of_range when either version has fewer than four parts.
[[nodiscard]] bool isUpdateAvailable(const QString& local, const QString& server);

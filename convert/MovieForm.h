#pragma once

/// How far a movie file has come, by its boxes.
enum class MovieForm {
    Begun, ///< as an encoder leaves it that did not get to its end: no index; also an empty file
    Whole, ///< it has an index (moov)
    Other  ///< nothing that an encoder writes
};

/// Looks at the boxes of an open, regular file of `size` bytes: a few short reads, wherever they
/// lead. May hang on a dead share.
[[nodiscard]] MovieForm movieForm(int descriptor, unsigned long long size);

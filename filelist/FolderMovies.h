#pragma once

#include <QStringList>

#include <atomic>

/// What there is to add when folders stand for the movies in them.
struct FolderMovies final {
    static constexpr qsizetype most = 20000;

    QStringList paths;
    bool hadFolder = false;
    bool isCut = false; ///< there are more than `most`
};

/// The paths in their order; in place of each folder the movies in it and in those below it, by
/// their names' endings, sorted as file managers do: folders first, numbers by their value. Hidden
/// ones are left out, a folder that was there before too. Blocks; ends early when `stop` is set.
/// Any thread.
[[nodiscard]] FolderMovies moviesOf(const QStringList& paths, const std::atomic<bool>& stop);

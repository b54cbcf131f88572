#pragma once

#include "filelist/MovieFile.h"

#include <QStringList>

#include <memory>
#include <optional>

class Examination;
class Examiner;
class WorkerThreads;

/// While a movie is being added the next ones are examined already, as far ahead as the processors
/// are kept busy. Not one on a removable volume, nor any behind it, before the user has been asked
/// about it.
/// Main thread; lives as long as one add, and leaves nothing running.
class AddAhead final {
public:
    struct Parts {
        Examiner& examiner;
        WorkerThreads& workers;
        std::shared_ptr<VolumeInfo> volumes;
    };

    /// `twice`: whether a movie is looked at twice.
    AddAhead(const QStringList& paths, bool twice, const Parts& parts);
    ~AddAhead();
    Q_DISABLE_COPY_MOVE(AddAhead)

    /// The user wants movies of removable volumes, without another question.
    void allowRemovable();
    /// What the file at `index` looked like ahead; nothing where nobody has looked.
    [[nodiscard]] std::optional<MovieFile> lookedAt(qsizetype index) const;
    /// The movie at `index` is at hand, and looks like `now`. What was found out ahead counts if
    /// the file has not changed since. Throws std::system_error where no thread can be had for it.
    [[nodiscard]] std::shared_ptr<const Examination> examine(qsizetype index, const MovieFile& now);

private:
    struct Movies;

    Examiner& examiner_;
    const bool twice_;
    const std::shared_ptr<Movies> movies_;
};

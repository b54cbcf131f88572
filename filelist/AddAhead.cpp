#include "filelist/AddAhead.h"

#include "media/Examiner.h"
#include "platform/WorkerThreads.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <utility>
#include <vector>

/// Shared with the thread that looks at the files, which may be left behind on a dead share.
struct AddAhead::Movies {
    Movies(QStringList moviePaths, bool isTwice, const Parts& parts)
        : paths(std::move(moviePaths)),
          twice(isTwice),
          volumes(parts.volumes),
          examiner(parts.examiner),
          ahead(static_cast<size_t>(paths.size())) {}

    struct Ahead {
        std::optional<MovieFile> file;
        std::shared_ptr<const Examination> examination;
    };

    const QStringList paths;
    const bool twice;
    const std::shared_ptr<VolumeInfo> volumes;
    Examiner& examiner; ///< used under the lock, and not after the end

    std::mutex mutex;
    std::condition_variable changed;
    qsizetype atHand = -1;
    bool removableAllowed = false;
    bool over = false;
    std::vector<Ahead> ahead;

    void lookAtFiles() {
        for (qsizetype index = 1; index < paths.size(); ++index) {
            switch (waitForTurn(index)) {
            case Turn::Never:
                return;
            case Turn::Over:
                continue;
            case Turn::Now:
                break;
            }
            const MovieFile file = lookAtMovieFile(paths[index], *volumes);
            std::unique_lock lock(mutex);
            if (over)
                return;
            Ahead& movie = ahead[static_cast<size_t>(index)];
            movie.file = file;
            // The answer about it may end the add.
            if (file.volume.removable)
                changed.wait(lock, [&] { return over || removableAllowed || index < atHand; });
            if (over)
                return;
            if (index <= atHand)
                continue;
            movie.examination = examiner.examine(paths[index], twice, Examiner::Place::Last);
        }
    }

    [[nodiscard]] qsizetype farthest() const { return atHand + examiner.atOnce() + 1; }

    void forgetLater() {
        const qsizetype end = std::min(farthest() + 1, paths.size());
        for (qsizetype index = atHand + 1; index < end; ++index)
            ahead[static_cast<size_t>(index)].examination.reset();
    }

    enum class Turn {
        Now,
        Over, ///< it is at hand already, and looked at by whoever adds it
        Never ///< the add is over
    };

    Turn waitForTurn(qsizetype index) {
        std::unique_lock lock(mutex);
        // The first one goes first.
        changed.wait(lock, [&] { return over || (atHand >= 0 && index <= farthest()); });
        if (over)
            return Turn::Never;
        return index <= atHand ? Turn::Over : Turn::Now;
    }
};

AddAhead::AddAhead(const QStringList& paths, bool twice, const Parts& parts)
    : examiner_(parts.examiner),
      twice_(twice),
      movies_(std::make_shared<Movies>(paths, twice, parts)) {
    if (paths.size() < 2)
        return;
    try {
        parts.workers.start([movies = movies_] { movies->lookAtFiles(); });
    } catch (const std::system_error&) {
        // Then each movie is examined when its turn comes.
    }
}

AddAhead::~AddAhead() {
    const std::lock_guard lock(movies_->mutex);
    movies_->over = true;
    movies_->ahead.clear();
    movies_->changed.notify_all();
}

void AddAhead::allowRemovable() {
    const std::lock_guard lock(movies_->mutex);
    movies_->removableAllowed = true;
    movies_->changed.notify_all();
}

std::optional<MovieFile> AddAhead::lookedAt(qsizetype index) const {
    const std::lock_guard lock(movies_->mutex);
    return movies_->ahead[static_cast<size_t>(index)].file;
}

std::shared_ptr<const Examination> AddAhead::examine(qsizetype index, const MovieFile& now) {
    const std::lock_guard lock(movies_->mutex);
    movies_->atHand = index;
    movies_->changed.notify_all();
    const Movies::Ahead movie = std::exchange(movies_->ahead[static_cast<size_t>(index)], {});
    if (movie.examination && movie.file->identity == now.identity)
        return movie.examination;
    // The one at hand waits for none of the later ones, which may hang.
    movies_->forgetLater();
    return examiner_.examine(movies_->paths[index], twice_, Examiner::Place::First);
}

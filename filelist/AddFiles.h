#pragma once

#include "filelist/AddAhead.h"
#include "filelist/JobRecord.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class AddWatch;
class ConversionDialogs;
class FileList;
class ListWindow;
class MainThread;
class MovieProbe;
class ProfileCatalogue;
class ResolutionCatalogue;
struct FolderMovies;
struct SharedState;

/// Adds movies to the list, picked in the panel or dropped: builds the record, examines the movie,
/// keeps it when its video is HEVC. The main loop turns meanwhile. Main thread; owned by
/// main().
class AddFiles final {
public:
    struct Parts {
        MainThread& mainThread;
        FileList& files;
        SharedState& state;
        MovieProbe& probe;
        AddAhead::Parts ahead;
        AddWatch& watch;
        const ProfileCatalogue& profiles;
        const ResolutionCatalogue& resolutions;
        ListWindow& window;
        ConversionDialogs& dialogs;
    };

    explicit AddFiles(Parts parts);
    Q_DISABLE_COPY_MOVE(AddFiles)

    /// What comes before the panel: every add asks about removable volumes afresh.
    void beforePanel();
    /// The movies of a confirmed panel, in its order. Ends early, without the closing steps, at
    /// the first movie whose report cannot be read or that is refused as the first of the list.
    void addPicked(const QStringList& paths);
    /// The same for paths that were dropped; a folder stands for the movies in it.
    void addDropped(const QStringList& paths);
    /// Shows the list as it is now; also after a panel that was cancelled.
    void close();

private:
    enum class Origin { Panel, Drop };
    enum class Next { GoOn, Stop, Leave };
    struct Left {}; ///< the movie at hand did not answer before the add had to end

    void begin();
    void addAll(const QStringList& paths, Origin origin);
    [[nodiscard]] QStringList withoutFolders(const QStringList& paths);
    void tellOfFolders(const FolderMovies& found);
    [[nodiscard]] Next addOne(const QString& path, Origin origin, AddAhead& ahead, qsizetype index);
    /// Nothing where the file does not answer before the add has to end.
    [[nodiscard]] std::optional<MovieFile> lookAt(const QString& path,
                                                  const std::optional<MovieFile>& before);
    [[nodiscard]] bool volumeIsRefused(const VolumeFacts& volume);
    /// The answer to the question about a removable volume that is to be taken without asking.
    [[nodiscard]] std::optional<int> storedAnswer() const;
    [[nodiscard]] bool isLookedAtTwice() const;
    [[nodiscard]] JobRecordPtr buildRecord(const QString& path);
    void examine(const JobRecordPtr& record, const QString& path);
    void throwIfLeft() const;
    void takeReport(JobRecord& record, const QString& report);
    void takeSize(JobRecord& record, const QString& report);
    void reject(Origin origin);
    void undoHalfBuilt(const JobRecordPtr& record);
    void tellUnsupported();
    void tellEncoderMissing();
    void tellEncoderUnsuitable();
    void tellEnded(const QString& path, qsizetype notLookedAt);
    void refreshCount();

    const Parts parts_;
    QString wordsAtTheEnd_; ///< of an add, for the line below the table
    bool unsupportedTold_ = false;
    bool encoderMissingTold_ = false;
    bool encoderUnsuitableTold_ = false;
};

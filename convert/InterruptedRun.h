#pragma once

#include "convert/Leftover.h"

#include <QString>

#include <memory>
#include <vector>

class NoteFile;

/// Half a movie that a program has left that died in the middle of a run, with the note that tells
/// of it. While this object lives no other start of the program speaks of it; then the note is
/// still there, unless it was taken away. Every call may hang where a folder does not answer. One
/// thread at a time.
class InterruptedRun final {
public:
    ~InterruptedRun();
    Q_DISABLE_COPY_MOVE(InterruptedRun)

    using Found = std::vector<std::shared_ptr<InterruptedRun>>;

    /// Those that the user is to be asked about. Notes that there is nothing to say of are taken
    /// away, but for those of a disk that is not there now.
    [[nodiscard]] static Found findAll(const QString& stateFolder);

    [[nodiscard]] QString output() const;

    /// Moves the file to the trash if it is still what it was, and takes the note away. False when
    /// a file is left.
    [[nodiscard]] bool moveToTrash();
    /// Takes the note away.
    void forget();

private:
    InterruptedRun(QString stateFolder, std::unique_ptr<NoteFile> file, RunNote note,
                   Circumstances circumstances);

    const QString stateFolder_;
    const std::unique_ptr<NoteFile> file_;
    const RunNote note_;
    Circumstances circumstances_;
};

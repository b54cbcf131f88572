#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

/// One file in the program's state folder, for a job that is under way; its writer holds a lock on
/// it, which the kernel takes away from a process that dies. Every call may hang where the home
/// folder does not answer. One thread at a time.
class NoteFile final {
public:
    ~NoteFile();
    Q_DISABLE_COPY_MOVE(NoteFile)

    /// `reelshift` in XDG_STATE_HOME or ~/.local/state; empty where there is neither.
    [[nodiscard]] static QString stateFolder();

    /// A new file, for its owner alone, with the lock. Makes the folder. Null on failure, with the
    /// reason in errno.
    [[nodiscard]] static std::unique_ptr<NoteFile> create(const QString& folder);
    /// The notes in a folder of the user's own: regular files of the user's, a hundred at the most.
    [[nodiscard]] static std::vector<std::unique_ptr<NoteFile>> openAll(const QString& folder);

    /// Takes the lock; false where another process has it.
    [[nodiscard]] bool claim();
    /// The content, or nothing where it is longer than a note can be.
    [[nodiscard]] QByteArray read() const;
    /// When markAlive() or add() was called last, in seconds since 1970.
    [[nodiscard]] qint64 lastAlive() const;

    /// When this has returned true the text lasts, whatever happens to the computer. It may be cut
    /// if that happens meanwhile: RunNote takes what is cut for not written.
    bool add(const QByteArray& text);
    void markAlive();
    /// Deletes the file.
    void remove();

private:
    NoteFile(int folder, int descriptor, QByteArray name);

    const int folder_;
    const int descriptor_;
    const QByteArray name_;
};

#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

class ActionGate;
class AddFiles;
class MainThread;
class MainWindow;
struct SharedState;

/// The movies that the command line, the desktop or a second start opens: added like dropped ones
/// as soon as nothing else is going on, and after a run, which a quiet line tells meanwhile. Main
/// thread; owned by main().
class OpenedMovies final : public QObject {
    Q_OBJECT

public:
    struct Parts {
        MainThread& mainThread;
        ActionGate& gate;
        SharedState& state;
        MainWindow& window;
        AddFiles& addFiles;
    };

    explicit OpenedMovies(Parts parts, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(OpenedMovies)

    /// `file:` addresses; those of other kinds are named in the quiet line. Returns at once.
    void open(const QStringList& addresses);
    /// Paths that were not added yet.
    [[nodiscard]] const QStringList& waiting() const { return waiting_; }

private:
    void addWaiting();
    void tellWaiting();

    const Parts parts_;
    QStringList waiting_;
    QTimer timer_;
    qsizetype told_ = 0; ///< how many the quiet line says wait for the end of the run
};

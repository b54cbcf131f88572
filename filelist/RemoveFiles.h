#pragma once

#include <QtGlobal>

#include <vector>

class FileList;
class ListWindow;
class RunControl;
struct SharedState;

/// Removes the checked rows at once, also during a run, and checks or unchecks all rows. Main
/// thread; owned by main().
class RemoveFiles final {
public:
    RemoveFiles(FileList& files, SharedState& state, RunControl& run, ListWindow& window)
        : files_(files), state_(state), run_(run), window_(window) {}
    Q_DISABLE_COPY_MOVE(RemoveFiles)

    void remove();
    void selectAll(bool checked);

private:
    /// Ends what goes on with a row that is about to be taken out of the lists.
    void letGo(int row);
    void endPaused(int jobId);

    FileList& files_;
    SharedState& state_;
    RunControl& run_;
    ListWindow& window_;
};

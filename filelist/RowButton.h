#pragma once

#include <QtGlobal>

#include <functional>

class FileList;
class ListWindow;
class MainThread;
class RunControl;
struct SharedState;

/// What a row's image button does: remove, pause or resume, by the row's status. Main thread;
/// owned by the controller.
class RowButton final {
public:
    /// The question about a source that has gone; see ConversionDialogs.
    using AskSourceUnavailable = std::function<int()>;

    RowButton(MainThread& mainThread, FileList& files, SharedState& state, RunControl& run,
              ListWindow& window, AskSourceUnavailable ask);
    Q_DISABLE_COPY_MOVE(RowButton)

    void press(int row);

private:
    void removeRow(int row);
    void resume(int row);
    void resumeWithoutSource(int jobId);

    MainThread& mainThread_;
    FileList& files_;
    SharedState& state_;
    RunControl& run_;
    ListWindow& window_;
    const AskSourceUnavailable askSourceUnavailable_;
};

#pragma once

#include <QtGlobal>

class ConversionDialogs;
class FileList;
class ListWindow;
class MainThread;
class RunControl;
struct SharedState;

/// What a row's image button does: remove, pause or resume, by the row's status. Main thread;
/// owned by main().
class RowButton final {
public:
    RowButton(MainThread& mainThread, FileList& files, SharedState& state, RunControl& run,
              ListWindow& window, ConversionDialogs& dialogs)
        : mainThread_(mainThread),
          files_(files),
          state_(state),
          run_(run),
          window_(window),
          dialogs_(dialogs) {}
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
    ConversionDialogs& dialogs_;
};

#pragma once

#include "app/AddCompanion.h"
#include "app/InterruptedRunQuestion.h"
#include "app/MainWindow.h"
#include "app/OutputFolder.h"
#include "app/RunCompanion.h"
#include "app/Surroundings.h"
#include "convert/ConversionEngine.h"
#include "filelist/AddFiles.h"
#include "filelist/AddWatch.h"
#include "filelist/ConversionDialogs.h"
#include "filelist/FileList.h"
#include "filelist/MovieProbe.h"
#include "filelist/RemoveFiles.h"
#include "media/Examiner.h"
#include "media/ProfileCatalogue.h"
#include "media/ResolutionCatalogue.h"
#include "platform/ChildProcesses.h"
#include "platform/MainThread.h"
#include "platform/WorkerThreads.h"
#include "table/FileTableModel.h"
#include "table/RowAnnouncements.h"
#include "table/RowButton.h"
#include "table/RowDrag.h"
#include "table/TableEditing.h"
#include "update/UpdateCheck.h"
#include "widgets/ActionGate.h"

/// All that the program is made of, put together: the list and what stands beside it, the services,
/// the window and the classes that carry out what the user does. Main thread; owned by main().
struct ProgramParts final {
    explicit ProgramParts(const Surroundings& surroundings);
    Q_DISABLE_COPY_MOVE(ProgramParts)

    const Surroundings surroundings;

    const ProfileCatalogue profiles;
    const ResolutionCatalogue resolutions;
    FileList files;
    SharedState state;

    MainThread mainThread;
    ChildProcesses processes;
    WorkerThreads workers;
    ActionGate gate;

    TableEditing editing;
    FileTableModel model;
    MainWindow window;
    ConversionDialogs dialogs;
    RowAnnouncements announcements;
    ConversionEngine engine;
    RunCompanion companion;
    ProbeRunner probeRunner;
    Examiner examiner;
    MovieProbe probe;
    AddWatch addWatch;
    AddCompanion addCompanion;
    AddFiles addFiles;
    RemoveFiles removeFiles;
    RowButton rowButton;
    RowDrag rowDrag;
    OutputFolder outputFolder;
    UpdateCheck update;
    InterruptedRunQuestion interruptedRuns;
};

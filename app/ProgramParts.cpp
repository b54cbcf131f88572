#include "app/ProgramParts.h"

#include "platform/LocalizedStrings.h"
#include "table/FileTableView.h"
#include "ui_MainWindow.h"

namespace {

SharedState freshState(std::chrono::milliseconds second) {
    SharedState state;
    state.second = second;
    return state;
}

} // namespace

ProgramParts::ProgramParts(const Surroundings& theSurroundings)
    : surroundings(theSurroundings),
      profiles(getLocalString("IDS_TXT_PROFILELIST"),
               getLocalString("IDS_TXT_PROFILELIST_DROPDOWN")),
      state(freshState(theSurroundings.second)),
      gate(mainThread),
      editing(files, state),
      model(files, state, editing, gate),
      window(theSurroundings.fileManager),
      dialogs(state, window),
      announcements(model, window.announcer()),
      engine({mainThread, processes, workers}, files, state, window, dialogs, profiles,
             theSurroundings.resourceFolder + QStringLiteral("/ffmpeg"),
             theSurroundings.stateFolder),
      companion(engine.watch(), window, theSurroundings.desktop),
      probeRunner(processes, theSurroundings.resourceFolder + QStringLiteral("/ffmpeg")),
      examiner(workers, probeRunner, mainThread.waker()),
      probe(mainThread, files, state),
      addCompanion(addWatch, window, theSurroundings.desktop.launcher),
      addFiles({mainThread,
                files,
                state,
                probe,
                {examiner, workers, theSurroundings.volumes},
                addWatch,
                profiles,
                resolutions,
                window,
                dialogs}),
      removeFiles(files, state, engine.rows(), window),
      rowButton(mainThread, files, state, engine.rows(), window, dialogs),
      rowDrag({files, state, gate, window, addFiles}),
      outputFolder(mainThread, theSurroundings.volumes, theSurroundings.fileManager),
      update(theSurroundings.update),
      interruptedRuns(mainThread, workers, gate, window) {
    files.setQualities(profiles.comboBoxItems(), profiles.cmbItems());
    window.form().comboBox->addItems(files.comboBoxItems);
    window.form().comboBox->setCurrentIndex(0);
    window.form().theTableNew->setFileModel(&model);
    files.setObserver(&model);
}

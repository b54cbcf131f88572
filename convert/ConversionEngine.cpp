#include "convert/ConversionEngine.h"

#include "filelist/SharedState.h"

ConversionEngine::ConversionEngine(Services services, FileList& files, SharedState& state,
                                   RunWindow& window, ConversionDialogs& dialogs,
                                   const ProfileCatalogue& profiles, const QString& encoderPath,
                                   const QString& stateFolder)
    : watch_(files),
      context_{services.mainThread,
               services.processes,
               services.workers,
               files,
               state,
               window,
               dialogs,
               watch_,
               profiles,
               encoderPath,
               stateFolder,
               state.second,
               {},
               {},
               {},
               {}},
      summary_(context_),
      queue_(context_, summary_),
      outcomes_(context_, queue_),
      monitor_(context_, queue_, outcomes_),
      pauseAndStop_(context_, queue_, summary_),
      job_(context_, queue_, monitor_, outcomes_, pauseAndStop_) {
    queue_.setJobStarter([this](const EncoderRunPtr& run) { job_.start(run); });
}

#include "convert/ConversionEngine.h"

#include "filelist/SharedState.h"

ConversionEngine::ConversionEngine(Services services, FileList& files, SharedState& state,
                                   RunWindow& window, ConversionDialogs& dialogs,
                                   const ProfileCatalogue& profiles, const QString& encoderPath,
                                   const QString& stateFolder)
    : watch_(files),
      jobs_(services.mainThread, files, state, watch_),
      context_{services.mainThread,
               services.processes,
               services.workers,
               files,
               state,
               window,
               dialogs,
               watch_,
               jobs_,
               profiles,
               encoderPath,
               stateFolder,
               state.second,
               [this](AfterJob after) { goOn(after); }},
      outcomes_(context_),
      monitor_(context_, outcomes_),
      jobThread_(context_, monitor_, outcomes_),
      lock_(context_),
      summary_(context_),
      queue_(context_, lock_, summary_, [this](const JobPtr& job) { jobThread_.start(job); }),
      rows_(context_, lock_),
      stopping_(context_, lock_, rows_, summary_),
      quitting_(context_),
      uncalled_(context_, lock_, rows_, summary_) {}

void ConversionEngine::goOn(AfterJob after) {
    switch (after) {
    case AfterJob::NextJob:
        queue_.startConverting();
        break;
    case AfterJob::EndRun:
        queue_.endRunAfterFailure();
        break;
    case AfterJob::StopRun:
        stopping_.stopConversion();
        break;
    }
}

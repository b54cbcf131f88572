#pragma once

#include "app/PersistedFolders.h"
#include "app/RunCompanion.h"
#include "update/UpdateSettings.h"

#include <QString>

#include <chrono>
#include <memory>

class FileManager;
class VolumeInfo;

/// What the program works with and a test brings its own of.
struct Surroundings final {
    QString resourceFolder; ///< holds the encoder, a program called ffmpeg
    QString version;        ///< four parts
    PersistedFolders folders;
    QString stateFolder;                 ///< of the notes of a run; empty for none
    std::shared_ptr<VolumeInfo> volumes; ///< also of threads that may be left behind
    FileManager& fileManager;
    RunCompanion::Desktop desktop;
    UpdateSettings update;
    std::chrono::milliseconds second{1000}; ///< of every deliberate wait
};

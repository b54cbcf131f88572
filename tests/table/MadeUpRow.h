#pragma once

#include "filelist/FileList.h"

/// Appends a row as an add leaves it that took a movie in: waiting, checked, of size 1920x1080,
/// under the next id. No file and no encoder takes part, and the model hears nothing of it.
JobRecordPtr addMadeUpRow(FileList& list, SharedState& state, const QString& name);

#pragma once

#include "filelist/ConvertingIndex.h"
#include "media/ProbeValues.h"

#include <QString>

#include <chrono>
#include <unordered_set>
#include <vector>

/// Ids in the order in which they came, each once.
class IdSet final {
public:
    [[nodiscard]] bool isEmpty() const { return ids_.empty(); }
    [[nodiscard]] bool contains(int id) const { return known_.contains(id); }
    [[nodiscard]] const std::vector<int>& ids() const { return ids_; }

    void add(int id);
    void remove(int id) { removeAll({id}); }
    void removeAll(const std::vector<int>& ids);
    void clear();

private:
    std::vector<int> ids_;
    std::unordered_set<int> known_;
};

/// The values that the parts of the program share, under the names by which they know them.
/// Main thread; one per program, so that a test starts afresh.
struct SharedState {
    ProbeValues probe;

    qint64 itemId = 0;
    qint64 count = 0;
    QString fileListStr;
    QString countstr;
    QString fileCountStr;
    QString outputFolder; ///< empty until a folder was chosen in this session

    ConvertingIndex convertingIndex;
    int convertingId = 0;
    bool isConversionRunning = false;
    bool stopped = false;
    bool error = false;
    bool isSourceAvailable = true;
    bool pausedFileIsDeleted = false;
    bool isPausedRemove = false;
    int noOfConvertedFile = 0;
    IdSet noOfconvertingFileList;

    bool checkStatusForFileConflict = false;
    bool checkStatusForConversionError = false;
    bool checkStatusForSdCardDelay = false;
    int resultStoredForConflict = 0;
    int resultStoredForConversionError = 0;
    int resultStoredForSdCardDelay = 0;

    /// Every deliberate wait of a run and of a row button; tests shorten it.
    std::chrono::milliseconds second{1000};
};

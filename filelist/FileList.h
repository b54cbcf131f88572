#pragma once

#include "filelist/JobRecord.h"
#include "filelist/SharedState.h"

#include <QStringList>

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

class ChildProcess;
class ProgressObject;

/// A suspended encoder and the row it belongs to.
struct PausedTask {
    std::shared_ptr<ChildProcess> task;
    int selectedError = -1; ///< read end of its error stream
    int taskid = 0;         ///< process identifier
    int selectedrowid = 0;  ///< "id" of the paused row
};

/// The list of movies: the job records and the lists that run beside them, position for position,
/// and the queue of ids. Plain data with the few operations that keep the lists in step; row
/// numbers out of range throw std::out_of_range. Main thread; owned by the controller.
class FileList final {
public:
    FileList() = default;
    Q_DISABLE_COPY_MOVE(FileList)

    [[nodiscard]] int rowCount() const { return static_cast<int>(fileInfoArr.size()); }
    [[nodiscard]] const JobRecordPtr& recordAt(int row) const {
        return fileInfoArr.at(size_t(row));
    }
    /// The record with this "id", null where there is none.
    [[nodiscard]] JobRecordPtr recordWithId(int id) const;
    /// Position of `id` in `idList`.
    [[nodiscard]] std::optional<int> rowOfId(int id) const;
    /// Rows of which every parallel list has its entry: a row is shown only when it is complete.
    [[nodiscard]] int completeRows() const;
    /// Whether `check` is not empty and holds no 0.
    [[nodiscard]] bool allChecked() const;

    /// Appends a record with its id and progress record; check state and quality are the caller's,
    /// and its size follows when the movie was examined.
    void append(const JobRecordPtr& record);
    /// Takes a rejected movie out again as Add File does: `cmb` loses the entry before the last,
    /// which is kept so; `progressObjects` keeps its stray entry. Throws std::out_of_range for the
    /// first movie of an empty list, after `fileInfoArr` and `check` were trimmed.
    void dropRejectedPicked();
    /// Takes a rejected movie out again as a drop does: each list loses its own last entry.
    void dropRejectedDropped();
    /// Brings the lists beside `fileInfoArr` back to its length, after an error ended an add.
    /// `progressObjects` keeps its stray entries.
    void trimToRecords();
    /// Takes a row out of all parallel lists, of the queue and of the shown records.
    void removeRow(int row);
    /// The same for several rows, in any order, at the cost of one pass over each list.
    void removeRows(const std::vector<int>& rows);
    /// Moves the records at `rows` (ascending) before the one at `target`; a target behind the end
    /// is the end. Kept: the records alone are moved, the lists beside them, the shown records
    /// too, keep their order; see `alignWithRecords`.
    void moveRecords(const std::vector<int>& rows, int target);
    /// After rows were dragged: makes all lists beside the records anew in their order, progress
    /// records by their ids, and has the queue name the movies that it would have come to. The
    /// answer tells, for each id that stood beside a record, the record's own; it is empty where
    /// the lists are in order, and nothing is touched then.
    std::unordered_map<int, int> alignWithRecords();
    /// Takes `id` out of the queue.
    void dequeue(int id);
    /// Takes the first entry of the queue out if it is `id`.
    void dequeueHead(int id);

    std::vector<JobRecordPtr> fileInfoArr;
    std::vector<int> check;
    QStringList cmb;
    std::vector<int> idList;
    std::vector<std::shared_ptr<ProgressObject>> progressObjects;
    QStringList resolutionListForTable;
    /// The records in the order in which the table shows them.
    std::vector<JobRecordPtr> arrayControllerNew;

    std::vector<int> conversionTaskList;
    std::vector<int> convertedFileList;
    std::vector<PausedTask> pausedList;
    std::vector<int> filePausedId;
    QStringList name; ///< never filled: the shown name is the record's

    QStringList comboBoxItems; ///< internal profile names
    QStringList cmbItems;      ///< shown profile names, in the same order
};

#pragma once

#include "filelist/JobRecord.h"
#include "filelist/SharedState.h"

#include <QStringList>

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

class ChildProcess;
class ListObserver;
class ProgressObject;

/// A suspended encoder and the row it belongs to.
struct PausedTask {
    std::shared_ptr<ChildProcess> task;
    int selectedError = -1; ///< read end of its error stream
    int taskid = 0;         ///< process identifier
    int selectedrowid = 0;  ///< "id" of the paused row
};

/// The list of movies: the job records and the lists that run beside them, position for position,
/// the queue of ids and the paused jobs. Everybody reads the lists; they change by the operations
/// alone. Row numbers out of range throw std::out_of_range. Main thread; owned by main().
class FileList final {
public:
    FileList() = default;
    Q_DISABLE_COPY_MOVE(FileList)

    [[nodiscard]] int rowCount() const { return static_cast<int>(fileInfoArr.size()); }
    [[nodiscard]] const JobRecordPtr& recordAt(int row) const {
        return fileInfoArr.at(size_t(row));
    }
    [[nodiscard]] const std::shared_ptr<ProgressObject>& progressAt(int row) const {
        return progressObjects.at(size_t(row));
    }
    /// The id that stands beside a row; after rows were dragged not that of its record.
    [[nodiscard]] int idAt(int row) const { return idList.at(size_t(row)); }
    /// The record with this "id", null where there is none.
    [[nodiscard]] JobRecordPtr recordWithId(int id) const;
    /// Position of `id` in `idList`.
    [[nodiscard]] std::optional<int> rowOfId(int id) const;
    /// Rows of which every parallel list has its entry: a row is shown only when it is complete.
    [[nodiscard]] int completeRows() const;
    /// Whether `check` is not empty and holds no 0.
    [[nodiscard]] bool allChecked() const;

    /// Who shows the list; it must outlive the list's last change.
    void setObserver(ListObserver* observer) { observer_ = observer; }
    /// Shows all rows anew.
    void reload();
    /// What a row shows has changed, with a record or progress record of it.
    void rowChanged(int row);

    /// The names of the qualities, internal and shown ones in the same order.
    void setQualities(const QStringList& profiles, const QStringList& shown);

    // Adding a movie: it is complete when its size has come and it is shown.
    /// Appends a checked movie with that quality, its id and a progress record.
    void append(const JobRecordPtr& record, const QString& quality);
    /// The size of the movie that was appended last.
    void appendResolution(const QString& resolution);
    void show(const JobRecordPtr& record);
    /// Shows the records in their own order, which a drag may have changed.
    void showRecords();
    /// Takes a rejected movie out again as Add File does: `cmb` loses the entry before the last,
    /// which is kept so; `progressObjects` keeps its stray entry. Throws std::out_of_range for the
    /// first movie of an empty list, after `fileInfoArr` and `check` were trimmed.
    void dropRejectedPicked();
    /// Takes a rejected movie out again as a drop does: each list loses its own last entry.
    void dropRejectedDropped();
    /// After an error ended an add: takes its last movie out again, unless it is shown already, and
    /// brings the lists beside `fileInfoArr` back to its length. `progressObjects` keeps its stray
    /// entries.
    void undoAppend(const JobRecordPtr& record);

    // What the user sets in a row; the record is left alone.
    void setCheck(int row, int check);
    void setCmb(int row, const QString& quality);
    void setResolution(int row, const QString& resolution);
    /// Of all rows, in the records too.
    void checkAll(bool checked);

    /// Takes a row out of all parallel lists, of the queue and of what is shown.
    void removeRow(int row);
    /// The same for several rows, in any order, at the cost of one pass over each list.
    void removeRows(const std::vector<int>& rows);
    /// Moves the records at `rows` (ascending) before the one at `target`; a target behind the end
    /// is the end. Kept: the records alone are moved, the lists beside them, the shown records
    /// too, keep their order; see `alignWithRecords`.
    void moveRecords(const std::vector<int>& rows, int target);
    /// After rows were dragged: makes all lists beside the records anew in their order, progress
    /// records by their ids, and has the queue and the paused jobs name the movies that they would
    /// have come to. The answer tells, for each id that stood beside a record, the record's own; it
    /// is empty where the lists are in order, and nothing is touched then.
    std::unordered_map<int, int> alignWithRecords();

    // The queue.
    void enqueue(int id) { conversionTaskList_.push_back(id); }
    /// Takes `id` out of the queue.
    void dequeue(int id);
    /// Takes the first entry of the queue out if it is `id`.
    void dequeueHead(int id);
    void clearQueue() { conversionTaskList_.clear(); }

    // The suspended encoders.
    void pause(const PausedTask& task) { pausedList_.push_back(task); }
    /// Takes out what was paused in the row with this id; null where nothing was.
    std::shared_ptr<ChildProcess> resume(int id);
    /// Takes the first entry out, if there is one.
    void dropFirstPaused();
    void clearPaused() { pausedList_.clear(); }

    // The movies that the end of the run takes out of the list.
    void noteConverted(int id) { convertedFileList_.push_back(id); }
    void forgetConverted() { convertedFileList_.clear(); }

    // The lists, to be read.
    const std::vector<JobRecordPtr>& fileInfoArr = fileInfoArr_;
    const std::vector<int>& check = check_;
    const QStringList& cmb = cmb_;
    const std::vector<int>& idList = idList_;
    const std::vector<std::shared_ptr<ProgressObject>>& progressObjects = progressObjects_;
    const QStringList& resolutionListForTable = resolutionListForTable_;
    /// The records in the order in which the table shows them.
    const std::vector<JobRecordPtr>& arrayControllerNew = arrayControllerNew_;

    const std::vector<int>& conversionTaskList = conversionTaskList_;
    const std::vector<int>& convertedFileList = convertedFileList_;
    const std::vector<PausedTask>& pausedList = pausedList_;
    std::vector<int> filePausedId; ///< kept: the program never fills it
    const QStringList name{};      ///< kept: empty, the shown name is the record's

    const QStringList& comboBoxItems = comboBoxItems_; ///< internal profile names
    const QStringList& cmbItems = cmbItems_;           ///< shown profile names, in the same order

private:
    void trimToRecords();

    ListObserver* observer_ = nullptr;

    std::vector<JobRecordPtr> fileInfoArr_;
    std::vector<int> check_;
    QStringList cmb_;
    std::vector<int> idList_;
    std::vector<std::shared_ptr<ProgressObject>> progressObjects_;
    QStringList resolutionListForTable_;
    std::vector<JobRecordPtr> arrayControllerNew_;
    std::vector<int> conversionTaskList_;
    std::vector<int> convertedFileList_;
    std::vector<PausedTask> pausedList_;
    QStringList comboBoxItems_;
    QStringList cmbItems_;
};

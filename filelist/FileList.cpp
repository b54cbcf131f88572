#include "filelist/FileList.h"

#include "filelist/EntryAt.h"
#include "filelist/ListObserver.h"
#include "filelist/ProgressObject.h"
#include "media/ProfileCatalogue.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_set>
#include <utility>

namespace {

template <typename List> void removeAt(List& list, int position) {
    (void)entryAt(list, position);
    list.erase(list.begin() + position);
}

template <typename List> void shortenTo(List& list, int length) {
    if (static_cast<int>(list.size()) > length)
        list.erase(list.begin() + length, list.end());
}

/// Takes the marked positions out in one pass; the list may be shorter or longer than the marks.
template <typename List> void removeMarked(List& list, const std::vector<bool>& marks) {
    const size_t marked = std::min(marks.size(), static_cast<size_t>(list.size()));
    auto kept = list.begin();
    for (size_t position = 0; position < marked; ++position) {
        if (!marks[position])
            *kept++ = std::move(*(list.begin() + static_cast<std::ptrdiff_t>(position)));
    }
    list.erase(kept, list.begin() + static_cast<std::ptrdiff_t>(marked));
}

} // namespace

JobRecordPtr FileList::recordWithId(int id) const {
    const auto found = std::find_if(fileInfoArr_.begin(), fileInfoArr_.end(),
                                    [id](const JobRecordPtr& each) { return each->id() == id; });
    return found != fileInfoArr_.end() ? *found : nullptr;
}

std::optional<int> FileList::rowOfId(int id) const {
    const auto found = std::find(idList_.begin(), idList_.end(), id);
    if (found == idList_.end())
        return std::nullopt;
    return static_cast<int>(found - idList_.begin());
}

int FileList::completeRows() const {
    return static_cast<int>(std::min(
        {fileInfoArr_.size(), check_.size(), static_cast<size_t>(cmb_.size()), idList_.size(),
         progressObjects_.size(), static_cast<size_t>(resolutionListForTable_.size()),
         arrayControllerNew_.size()}));
}

bool FileList::allChecked() const {
    return !check_.empty() && std::find(check_.begin(), check_.end(), 0) == check_.end();
}

void FileList::reload() {
    if (observer_)
        observer_->reload();
}

void FileList::rowChanged(int row) {
    // After rows were dragged a row's number does not name its shown record any more.
    const auto at = static_cast<size_t>(row);
    if (at >= arrayControllerNew_.size() || at >= fileInfoArr_.size() ||
        arrayControllerNew_[at] != fileInfoArr_[at])
        reload();
    else if (observer_)
        observer_->rowChanged(row);
}

void FileList::setQualities(const QStringList& profiles, const QStringList& shown) {
    comboBoxItems_ = profiles;
    cmbItems_ = shown;
}

void FileList::append(const JobRecordPtr& record, const QString& quality) {
    check_.push_back(1);
    cmb_.push_back(quality);
    fileInfoArr_.push_back(record);
    idList_.push_back(record->id());
    progressObjects_.push_back(std::make_shared<ProgressObject>());
}

void FileList::appendResolution(const QString& resolution) {
    resolutionListForTable_.push_back(resolution);
}

void FileList::show(const JobRecordPtr& record) {
    arrayControllerNew_.push_back(record);
    if (observer_)
        observer_->rowsWereAdded();
}

void FileList::showRecords() {
    arrayControllerNew_ = fileInfoArr_;
}

void FileList::dropRejectedPicked() {
    removeAt(fileInfoArr_, rowCount() - 1);
    removeAt(check_, static_cast<int>(check_.size()) - 1);
    // Kept: the entry before the last goes, so a changed quality of the row above is replaced by
    // the rejected movie's default.
    removeAt(cmb_, static_cast<int>(check_.size()) - 1);
    removeAt(idList_, static_cast<int>(idList_.size()) - 1);
}

void FileList::dropRejectedDropped() {
    removeAt(fileInfoArr_, rowCount() - 1);
    removeAt(check_, static_cast<int>(check_.size()) - 1);
    removeAt(cmb_, static_cast<int>(cmb_.size()) - 1);
    removeAt(idList_, static_cast<int>(idList_.size()) - 1);
}

void FileList::undoAppend(const JobRecordPtr& record) {
    const bool isShown = !arrayControllerNew_.empty() && arrayControllerNew_.back() == record;
    if (!isShown && !fileInfoArr_.empty() && fileInfoArr_.back() == record)
        fileInfoArr_.pop_back();
    trimToRecords();
}

void FileList::trimToRecords() {
    shortenTo(check_, rowCount());
    shortenTo(cmb_, rowCount());
    shortenTo(idList_, rowCount());
    shortenTo(resolutionListForTable_, rowCount());
}

void FileList::setCheck(int row, int check) {
    entryAt(check_, row) = check;
}

void FileList::setCmb(int row, const QString& quality) {
    entryAt(cmb_, row) = quality;
}

void FileList::setResolution(int row, const QString& resolution) {
    entryAt(resolutionListForTable_, row) = resolution;
}

void FileList::checkAll(bool checked) {
    const int value = checked ? 1 : 0;
    for (int row = 0; row < static_cast<int>(check_.size()); ++row) {
        setCheck(row, value);
        recordAt(row)->set(key::check, value);
    }
}

void FileList::removeRow(int row) {
    removeRows({row});
}

void FileList::removeRows(const std::vector<int>& rows) {
    std::vector<bool> isRemoved(fileInfoArr_.size());
    std::unordered_set<int> ids;
    for (const int row : rows) {
        ids.insert(recordAt(row)->id());
        isRemoved[static_cast<size_t>(row)] = true;
    }
    removeMarked(fileInfoArr_, isRemoved);
    removeMarked(idList_, isRemoved);
    removeMarked(check_, isRemoved);
    removeMarked(cmb_, isRemoved);
    removeMarked(resolutionListForTable_, isRemoved);
    removeMarked(progressObjects_, isRemoved);
    removeMarked(arrayControllerNew_, isRemoved);
    std::erase_if(conversionTaskList_, [&](int id) { return ids.contains(id); });
    if (observer_)
        observer_->rowsWereRemoved(rows);
}

void FileList::moveRecords(const std::vector<int>& rows, int target) {
    const auto end = static_cast<size_t>(std::clamp(target, 0, rowCount()));
    std::vector<bool> isMoved(fileInfoArr_.size());
    std::vector<JobRecordPtr> moved;
    for (const int row : rows) {
        moved.push_back(fileInfoArr_.at(static_cast<size_t>(row)));
        isMoved[static_cast<size_t>(row)] = true;
    }
    std::vector<JobRecordPtr> order;
    order.reserve(fileInfoArr_.size());
    for (size_t row = 0; row < end; ++row) {
        if (!isMoved[row])
            order.push_back(fileInfoArr_[row]);
    }
    order.insert(order.end(), moved.begin(), moved.end());
    for (size_t row = end; row < fileInfoArr_.size(); ++row) {
        if (!isMoved[row])
            order.push_back(fileInfoArr_[row]);
    }
    fileInfoArr_ = std::move(order);
}

std::unordered_map<int, int> FileList::alignWithRecords() {
    std::unordered_map<int, int> recordIds;
    std::unordered_map<int, std::shared_ptr<ProgressObject>> progress;
    bool isInOrder = true;
    for (size_t row = 0; row < fileInfoArr_.size(); ++row) {
        const int id = fileInfoArr_[row]->id();
        recordIds[idList_.at(row)] = id;
        progress[idList_.at(row)] = progressObjects_.at(row);
        isInOrder = isInOrder && idList_[row] == id;
    }
    if (isInOrder)
        return {};
    arrayControllerNew_ = fileInfoArr_;
    idList_.clear();
    check_.clear();
    cmb_.clear();
    resolutionListForTable_.clear();
    progressObjects_.clear();
    for (const JobRecordPtr& record : fileInfoArr_) {
        const int item = ProfileCatalogue::itemOf(record->text(key::profile), comboBoxItems);
        idList_.push_back(record->id());
        check_.push_back(record->number(key::check));
        cmb_.push_back(cmbItems.value(item));
        resolutionListForTable_.push_back(record->text(key::resolution));
        progressObjects_.push_back(progress.at(record->id()));
    }
    const auto align = [&](int& id) {
        if (const auto found = recordIds.find(id); found != recordIds.end())
            id = found->second;
    };
    std::for_each(conversionTaskList_.begin(), conversionTaskList_.end(), align);
    for (PausedTask& each : pausedList_)
        align(each.selectedrowid);
    return recordIds;
}

void FileList::dequeue(int id) {
    conversionTaskList_.erase(
        std::remove(conversionTaskList_.begin(), conversionTaskList_.end(), id),
        conversionTaskList_.end());
}

void FileList::dequeueHead(int id) {
    if (!conversionTaskList_.empty() && conversionTaskList_.front() == id)
        conversionTaskList_.erase(conversionTaskList_.begin());
}

std::shared_ptr<ChildProcess> FileList::resume(int id) {
    const auto found =
        std::find_if(pausedList_.begin(), pausedList_.end(),
                     [id](const PausedTask& each) { return each.selectedrowid == id; });
    if (found == pausedList_.end())
        return nullptr;
    const std::shared_ptr<ChildProcess> task = found->task;
    pausedList_.erase(found);
    return task;
}

void FileList::dropFirstPaused() {
    if (!pausedList_.empty())
        pausedList_.erase(pausedList_.begin());
}

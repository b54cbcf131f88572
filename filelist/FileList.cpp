#include "filelist/FileList.h"

#include "filelist/ProgressObject.h"
#include "media/ProfileCatalogue.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_set>
#include <utility>

namespace {

template <typename List> void removeAt(List& list, int position) {
    if (position < 0 || position >= static_cast<int>(list.size()))
        throw std::out_of_range("position " + std::to_string(position) + " of a list of " +
                                std::to_string(list.size()));
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
    const auto found = std::find_if(fileInfoArr.begin(), fileInfoArr.end(),
                                    [id](const JobRecordPtr& each) { return each->id() == id; });
    return found != fileInfoArr.end() ? *found : nullptr;
}

std::optional<int> FileList::rowOfId(int id) const {
    const auto found = std::find(idList.begin(), idList.end(), id);
    if (found == idList.end())
        return std::nullopt;
    return static_cast<int>(found - idList.begin());
}

int FileList::completeRows() const {
    return static_cast<int>(
        std::min({fileInfoArr.size(), check.size(), static_cast<size_t>(cmb.size()), idList.size(),
                  progressObjects.size(), static_cast<size_t>(resolutionListForTable.size()),
                  arrayControllerNew.size()}));
}

bool FileList::allChecked() const {
    return !check.empty() && std::find(check.begin(), check.end(), 0) == check.end();
}

void FileList::append(const JobRecordPtr& record) {
    fileInfoArr.push_back(record);
    idList.push_back(record->id());
    progressObjects.push_back(std::make_shared<ProgressObject>());
}

void FileList::dropRejectedPicked() {
    removeAt(fileInfoArr, rowCount() - 1);
    removeAt(check, static_cast<int>(check.size()) - 1);
    // Kept: the entry before the last goes, so a changed quality of the row above is replaced by
    // the rejected movie's default.
    removeAt(cmb, static_cast<int>(check.size()) - 1);
    removeAt(idList, static_cast<int>(idList.size()) - 1);
}

void FileList::dropRejectedDropped() {
    removeAt(fileInfoArr, rowCount() - 1);
    removeAt(check, static_cast<int>(check.size()) - 1);
    removeAt(cmb, static_cast<int>(cmb.size()) - 1);
    removeAt(idList, static_cast<int>(idList.size()) - 1);
}

void FileList::trimToRecords() {
    shortenTo(check, rowCount());
    shortenTo(cmb, rowCount());
    shortenTo(idList, rowCount());
    shortenTo(resolutionListForTable, rowCount());
}

void FileList::removeRow(int row) {
    removeRows({row});
}

void FileList::removeRows(const std::vector<int>& rows) {
    std::vector<bool> isRemoved(fileInfoArr.size());
    std::unordered_set<int> ids;
    for (const int row : rows) {
        ids.insert(recordAt(row)->id());
        isRemoved[static_cast<size_t>(row)] = true;
    }
    removeMarked(fileInfoArr, isRemoved);
    removeMarked(idList, isRemoved);
    removeMarked(check, isRemoved);
    removeMarked(cmb, isRemoved);
    removeMarked(resolutionListForTable, isRemoved);
    removeMarked(progressObjects, isRemoved);
    removeMarked(arrayControllerNew, isRemoved);
    std::erase_if(conversionTaskList, [&](int id) { return ids.contains(id); });
}

void FileList::moveRecords(const std::vector<int>& rows, int target) {
    const auto end = static_cast<size_t>(std::clamp(target, 0, rowCount()));
    std::vector<bool> isMoved(fileInfoArr.size());
    std::vector<JobRecordPtr> moved;
    for (const int row : rows) {
        moved.push_back(fileInfoArr.at(static_cast<size_t>(row)));
        isMoved[static_cast<size_t>(row)] = true;
    }
    std::vector<JobRecordPtr> order;
    order.reserve(fileInfoArr.size());
    for (size_t row = 0; row < end; ++row) {
        if (!isMoved[row])
            order.push_back(fileInfoArr[row]);
    }
    order.insert(order.end(), moved.begin(), moved.end());
    for (size_t row = end; row < fileInfoArr.size(); ++row) {
        if (!isMoved[row])
            order.push_back(fileInfoArr[row]);
    }
    fileInfoArr = std::move(order);
}

std::unordered_map<int, int> FileList::alignWithRecords() {
    std::unordered_map<int, int> recordIds;
    std::unordered_map<int, std::shared_ptr<ProgressObject>> progress;
    bool isInOrder = true;
    for (size_t row = 0; row < fileInfoArr.size(); ++row) {
        const int id = fileInfoArr[row]->id();
        recordIds[idList.at(row)] = id;
        progress[idList.at(row)] = progressObjects.at(row);
        isInOrder = isInOrder && idList[row] == id;
    }
    if (isInOrder)
        return {};
    arrayControllerNew = fileInfoArr;
    idList.clear();
    check.clear();
    cmb.clear();
    resolutionListForTable.clear();
    progressObjects.clear();
    for (const JobRecordPtr& record : fileInfoArr) {
        const int item = ProfileCatalogue::itemOf(record->text(key::profile), comboBoxItems);
        idList.push_back(record->id());
        check.push_back(record->number(key::check));
        cmb.push_back(cmbItems.value(item));
        resolutionListForTable.push_back(record->text(key::resolution));
        progressObjects.push_back(progress.at(record->id()));
    }
    for (int& id : conversionTaskList) {
        if (const auto found = recordIds.find(id); found != recordIds.end())
            id = found->second;
    }
    return recordIds;
}

void FileList::dequeue(int id) {
    conversionTaskList.erase(std::remove(conversionTaskList.begin(), conversionTaskList.end(), id),
                             conversionTaskList.end());
}

void FileList::dequeueHead(int id) {
    if (!conversionTaskList.empty() && conversionTaskList.front() == id)
        conversionTaskList.erase(conversionTaskList.begin());
}

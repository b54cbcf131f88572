#include "table/FileTableSource.h"

#include "filelist/EntryAt.h"
#include "filelist/ProgressObject.h"
#include "filelist/StatusWords.h"
#include "media/ProfileCatalogue.h"
#include "platform/LocalizedStrings.h"
#include "table/FileTableKeys.h"

namespace {

/// Names the movie in a text about its button.
QString spokenButton(const QString& image, const QString& name) {
    return getLocalString(image == rowimage::pause    ? "IDS_A11Y_ROW_PAUSE"
                          : image == rowimage::resume ? "IDS_A11Y_ROW_RESUME"
                                                      : "IDS_A11Y_ROW_REMOVE")
        .arg(name);
}

QString tipOfButton(const QString& image, const QString& name) {
    if (image != rowimage::pause && image != rowimage::resume)
        return getLocalString("IDS_TIP_ROW_REMOVE").arg(name);
    const char* const id = image == rowimage::pause ? "IDS_TIP_ROW_PAUSE" : "IDS_TIP_ROW_RESUME";
    return tipWithKey(getLocalString(id).arg(name), tablekey::pauseOrResume);
}

} // namespace

QString identifierOf(TableColumn column) {
    switch (column) {
    case TableColumn::Check:
        return column::check;
    case TableColumn::Name:
        return column::name;
    case TableColumn::Duration:
        return column::duration;
    case TableColumn::Audio:
        return column::audio;
    case TableColumn::Res:
        return column::res;
    case TableColumn::Cmb:
        return column::cmb;
    case TableColumn::Progress:
        return column::progress;
    case TableColumn::Im:
        return column::im;
    }
    return {};
}

QVariant FileTableSource::objectValueForTableColumn(const QString& identifier, int row) const {
    if (identifier == column::progress)
        return QString::number(list_.progressAt(row)->currentStep());
    if (identifier == column::name)
        return entryAt(list_.name, row); // kept: the list is never filled
    if (identifier == column::check)
        return list_.check.at(size_t(row));
    if (identifier == column::res)
        return entryAt(list_.resolutionListForTable, row);
    return {};
}

bool FileTableSource::willDisplayCellEnabled(const QString& identifier) const {
    return !state_.isConversionRunning || (identifier != column::res && identifier != column::cmb);
}

QString FileTableSource::willDisplayCellImage(const QString& identifier) {
    return identifier == column::check ? QStringLiteral("table_pause.png") : QString();
}

QStringList FileTableSource::startingCellForTableColumn(const QString& identifier) {
    if (identifier != column::cmb && identifier != column::res)
        return {};
    return {getLocalString("IDS_TXT_PROFILELIST_1"), getLocalString("IDS_TXT_PROFILELIST_2"),
            getLocalString("IDS_TXT_PROFILELIST_3")};
}

QStringList FileTableSource::dataCellForTableColumn(const QString& identifier, int row) const {
    if (identifier == column::cmb)
        return startingCellForTableColumn(identifier);
    if (identifier != column::res || row < 0 || row >= list_.rowCount())
        return {};
    return sizesOf(*list_.recordAt(row));
}

QStringList FileTableSource::updateResolutionCell(QStringList cell) const {
    for (const JobRecordPtr& record : list_.fileInfoArr) {
        const QStringList offered = sizesOf(*record);
        if (!offered.isEmpty())
            cell = offered;
    }
    return cell;
}

QStringList FileTableSource::sizesOf(const JobRecord& record) const {
    const int id = record.number(key::resolutionID);
    return id == ResolutionCatalogue::ownListId ? record.value(key::ownSizes).toStringList()
                                                : sizes_.items(id);
}

bool FileTableSource::shouldSelectRow(int row) const {
    return row >= 0 && row < list_.rowCount();
}

int FileTableSource::numberOfItemsInComboBox() const {
    return static_cast<int>(list_.comboBoxItems.size());
}

QString FileTableSource::comboBoxObjectValueForItemAtIndex(bool isMainComboBox, int index) const {
    return isMainComboBox ? entryAt(list_.comboBoxItems, index) : QString();
}

bool FileTableSource::isChecked(int row) const {
    return isShown(row) && list_.check.at(size_t(row)) != 0;
}

int FileTableSource::idAt(int row) const {
    return isShown(row) ? list_.idAt(row) : 0;
}

QString FileTableSource::shownText(TableColumn column, int row) const {
    if (!isShown(row))
        return {};
    const JobRecordPtr& record = list_.arrayControllerNew.at(size_t(row));
    switch (column) {
    case TableColumn::Name:
        return record->text(key::name);
    case TableColumn::Duration:
        return record->text(key::duration);
    case TableColumn::Audio:
        return record->text(key::audio);
    case TableColumn::Res:
        return list_.resolutionListForTable.at(row);
    case TableColumn::Cmb:
        // Neither the record's "profileForCol" nor the list beside the records: each of them is
        // left behind by some change, and what is shown is what the movie is converted in.
        return list_.cmbItems.value(
            ProfileCatalogue::itemOf(record->text(key::profile), list_.comboBoxItems));
    case TableColumn::Progress:
        return record->text(key::progress);
    case TableColumn::Check:
    case TableColumn::Im:
        break;
    }
    return {};
}

QString FileTableSource::spokenText(TableColumn column, int row) const {
    if (!isShown(row))
        return {};
    switch (column) {
    case TableColumn::Check:
        return getLocalString(isChecked(row) ? "IDS_TXT_CHECKED" : "IDS_TXT_UNCHECKED");
    case TableColumn::Progress: {
        const QString over = textOverStatus(row);
        return over.isEmpty() ? shownText(column, row) : over;
    }
    case TableColumn::Im:
        return spokenButton(imageAt(row), shownText(TableColumn::Name, row));
    default:
        return shownText(column, row);
    }
}

QString FileTableSource::toolTip(TableColumn column, int row) const {
    if (!isShown(row))
        return {};
    switch (column) {
    case TableColumn::Check:
        return getLocalString("IDS_TIP_CELL_CHECK");
    case TableColumn::Res:
        return tipOfList(column, "IDS_TIP_CELL_RESOLUTION", row);
    case TableColumn::Cmb:
        return tipOfList(column, "IDS_TIP_CELL_PROFILE", row);
    case TableColumn::Im:
        return tipOfButton(imageAt(row), shownText(TableColumn::Name, row));
    case TableColumn::Progress: {
        const ProgressObject& progress = *list_.progressAt(row);
        return progress.showsBar() ? progress.timeLeft() : QString();
    }
    default:
        return {}; // the delegate shows the text where it is cut
    }
}

// With what there is to choose from, each on a line of its own.
QString FileTableSource::tipOfList(TableColumn column, const char* text, int row) const {
    const QString identifier = identifierOf(column);
    if (!willDisplayCellEnabled(identifier))
        return getLocalString("IDS_TIP_CELL_LOCKED");
    return (QStringList(getLocalString(text)) + dataCellForTableColumn(identifier, row))
        .join(u'\n');
}

QString FileTableSource::imageAt(int row) const {
    return isShown(row) ? list_.arrayControllerNew.at(size_t(row))->text(key::image) : QString();
}

std::shared_ptr<const ProgressObject> FileTableSource::progressAt(int row) const {
    return isShown(row) ? list_.progressAt(row) : nullptr;
}

QString FileTableSource::textOverStatus(int row) const {
    const ProgressObject& progress = *list_.progressAt(row);
    return progress.showsBar() ? progress.textProgress().text() : progress.statusString();
}

bool FileTableSource::isButtonTrue(int row) const {
    return isShown(row) && list_.recordAt(row)->text(key::image) == imageAt(row);
}

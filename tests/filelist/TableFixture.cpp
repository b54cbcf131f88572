#include "filelist/TableFixture.h"

#include "filelist/StatusWords.h"
#include "platform/LocalizedStrings.h"
#include "widgets/ProgressObject.h"

#include <algorithm>

TableFixture::TableFixture() {
    list.comboBoxItems = {QStringLiteral("H.264 LV2 : Pro"),
                          QStringLiteral("H.264 LV1 : Best Quality"),
                          QStringLiteral("H.264 LV0 : Normal")};
    for (const char* const key :
         {"IDS_TXT_PROFILELIST_1", "IDS_TXT_PROFILELIST_2", "IDS_TXT_PROFILELIST_3"})
        list.cmbItems.append(getLocalString(key));
}

int TableFixture::addRow(const QString& name) {
    const int id = static_cast<int>(++state.itemId);
    const auto record = std::make_shared<JobRecord>();
    record->set(key::id, id);
    record->set(key::name, name);
    record->set(key::check, 1);
    record->set(key::audio, QStringLiteral("AAC"));
    record->set(key::duration, QStringLiteral("00:01:23.45"));
    record->set(key::profile, list.comboBoxItems.at(1));
    record->set(key::profileForCol, list.cmbItems.at(1));
    record->set(key::status, status::STATWT);
    record->set(key::progress, getLocalString("IDS_TXT_STATUS_WAITING"));
    record->set(key::image, rowimage::remove);
    record->set(key::cmb, list.cmbItems.at(1));
    record->set(key::resolutionID, 3);
    record->set(key::resolution, QStringLiteral("1920x1080"));
    list.check.push_back(1);
    list.cmb.append(list.cmbItems.at(1));
    list.append(record);
    list.resolutionListForTable.append(QStringLiteral("1920x1080"));
    list.arrayControllerNew.push_back(record);
    state.count = list.rowCount();
    return id;
}

void TableFixture::addRows(int count) {
    for (int i = 0; i < count; ++i)
        addRow(QStringLiteral("movie %1.mp4").arg(list.rowCount()));
}

void TableFixture::removeRows(const std::vector<int>& rows) {
    std::vector<int> descending = rows;
    std::sort(descending.rbegin(), descending.rend());
    for (const int row : descending)
        list.removeRow(row);
    model.rowsWereRemoved(rows);
}

QString TableFixture::shown(int row, TableColumn column) const {
    return cell(row, column).data(Qt::DisplayRole).toString();
}

QModelIndex TableFixture::cell(int row, TableColumn column) const {
    return model.index(row, static_cast<int>(column));
}

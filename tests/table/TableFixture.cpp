#include "table/TableFixture.h"

#include "platform/LocalizedStrings.h"
#include "table/MadeUpRow.h"

#include <algorithm>

TableFixture::TableFixture() {
    QStringList shown;
    for (const char* const key :
         {"IDS_TXT_PROFILELIST_1", "IDS_TXT_PROFILELIST_2", "IDS_TXT_PROFILELIST_3"})
        shown += getLocalString(key);
    list.setQualities({QStringLiteral("H.264 LV2 : Pro"),
                       QStringLiteral("H.264 LV1 : Best Quality"),
                       QStringLiteral("H.264 LV0 : Normal")},
                      shown);
}

int TableFixture::addRow(const QString& name) {
    return addMadeUpRow(list, state, name)->id();
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

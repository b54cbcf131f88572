#include "table/TableEditing.h"

#include "filelist/EntryAt.h"
#include "media/ProfileCatalogue.h"
#include "table/FileTableColumns.h"

#include <QRegularExpression>

#include <algorithm>

bool TableEditing::isPictureSize(const QString& text) {
    static const QRegularExpression size(QStringLiteral("\\A[0-9]+x[0-9]+\\z"));
    return size.match(text).hasMatch();
}

bool TableEditing::isEditable(const QString& identifier) const {
    if (identifier == column::check)
        return true;
    return (identifier == column::cmb || identifier == column::res) && !state_.isConversionRunning;
}

std::optional<bool> TableEditing::storeEdit(const QString& identifier, const QVariant& value,
                                            int row) {
    if (identifier == column::check)
        list_.setCheck(row, value.toInt());
    else if (identifier == column::cmb)
        list_.setCmb(row, value.toString());
    else if (identifier == column::res)
        list_.setResolution(row, value.toString());
    bringRecordsInLine();
    state_.count = static_cast<qint64>(list_.check.size());
    if (state_.count <= 0)
        return std::nullopt;
    return list_.allChecked();
}

void TableEditing::bringRecordsInLine() {
    for (int row = 0; row < static_cast<int>(list_.check.size()); ++row)
        list_.recordAt(row)->set(key::check, list_.check[size_t(row)]);
    for (int row = 0; row < list_.resolutionListForTable.size(); ++row)
        list_.recordAt(row)->set(key::resolution, list_.resolutionListForTable.at(row));
    // Kept: the records' "cmb" and "profileForCol" are not touched.
    for (int row = 0; row < list_.cmb.size(); ++row) {
        const QString& shown = list_.cmb.at(row);
        const int item = shown == entryAt(list_.cmbItems, 1)   ? 1
                         : shown == entryAt(list_.cmbItems, 2) ? 2
                                                               : 0;
        list_.recordAt(row)->set(key::profile, entryAt(list_.comboBoxItems, item));
    }
}

void TableEditing::comboBoxSelectionDidChange(int item, int selectedRow) {
    const QString profile = entryAt(list_.comboBoxItems, item);
    // Kept: the level's name is formed and not used, but a name without one ends the change here.
    [[maybe_unused]] const QString level = ProfileCatalogue::levelText(profile);

    if (std::find(list_.check.begin(), list_.check.end(), 1) == list_.check.end()) {
        // Kept: without a checked row only the record's "profile" changes.
        if (selectedRow >= 0)
            list_.recordAt(selectedRow)->set(key::profile, profile);
        return;
    }
    const QString shown = entryAt(list_.cmbItems, item);
    // `count` is stale after checked rows were removed.
    const int rows = static_cast<int>(std::min<qint64>(state_.count, list_.rowCount()));
    for (int row = rows - 1; row >= 0; --row) {
        if (entryAt(list_.check, row) != 1)
            continue;
        JobRecord& record = *list_.recordAt(row);
        record.set(key::profile, profile);
        record.set(key::cmb, shown);
        list_.setCmb(row, shown);
        record.set(key::profileForCol, shown);
    }
}

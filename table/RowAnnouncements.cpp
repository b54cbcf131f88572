#include "table/RowAnnouncements.h"

#include "platform/LocalizedStrings.h"
#include "table/FileTableModel.h"
#include "table/ProgressCell.h"
#include "widgets/Announcer.h"

#include <QSet>

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

RowAnnouncements::RowAnnouncements(const FileTableModel& model, Announcer& announcer)
    : model_(model), announcer_(announcer) {
    pause_.setSingleShot(true);
    pause_.setInterval(200ms);
    connect(&pause_, &QTimer::timeout, this, &RowAnnouncements::look);
    connect(&model, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex& last) {
                constexpr int progress = static_cast<int>(TableColumn::Progress);
                if (first.column() <= progress && progress <= last.column())
                    noteChange(first.row(), last.row());
            });
    const auto noteAll = [this] { noteChange(0, model_.rowCount() - 1); };
    connect(&model, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex&, int first, int last) { noteChange(first, last); });
    connect(&model, &QAbstractItemModel::rowsRemoved, this, noteAll);
    connect(&model, &QAbstractItemModel::modelReset, this, noteAll);
}

void RowAnnouncements::noteChange(int firstRow, int lastRow) {
    firstChanged_ = firstChanged_ < 0 ? firstRow : std::min(firstChanged_, firstRow);
    lastChanged_ = std::max(lastChanged_, lastRow);
    if (!pause_.isActive())
        pause_.start();
}

void RowAnnouncements::look() {
    const int first = std::exchange(firstChanged_, -1);
    const int last = std::min(std::exchange(lastChanged_, -1), model_.rowCount() - 1);
    for (int row = std::max(first, 0); row <= last; ++row) {
        const int id = model_.index(row, 0).data(FileTableModel::IdRole).toInt();
        const QString status = statusAt(row);
        if (status.isEmpty())
            continue;
        const auto known = known_.find(id);
        if (known == known_.end()) {
            known_.insert(id, status);
        } else if (*known != status) {
            *known = status;
            const QModelIndex name = model_.index(row, static_cast<int>(TableColumn::Name));
            announcer_.say(getLocalString("IDS_A11Y_ROW_STATUS")
                               .arg(name.data(Qt::AccessibleTextRole).toString(), status));
        }
    }
    // Ids are never used twice, so what stays of removed rows does no harm but fill memory.
    if (known_.size() <= 2 * model_.rowCount() + 100)
        return;
    QSet<int> ids;
    for (int row = 0; row < model_.rowCount(); ++row)
        ids.insert(model_.index(row, 0).data(FileTableModel::IdRole).toInt());
    known_.removeIf(
        [&](const std::pair<const int&, QString&>& each) { return !ids.contains(each.first); });
}

QString RowAnnouncements::statusAt(int row) const {
    const QModelIndex cell = model_.index(row, static_cast<int>(TableColumn::Progress));
    return cell.data(ProgressCell::ShowsBarRole).toBool()
               ? getLocalString("IDS_A11Y_ROW_PROGRESS")
               : cell.data(Qt::AccessibleTextRole).toString();
}

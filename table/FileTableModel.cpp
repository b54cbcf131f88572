#include "table/FileTableModel.h"

#include "filelist/ProgressObject.h"
#include "platform/LocalizedStrings.h"
#include "resources/DrawnImage.h"
#include "table/ProgressCell.h"
#include "widgets/ActionGate.h"

#include <QFileInfo>
#include <QTextDocument>

#include <algorithm>

namespace {

const char* headerKey(TableColumn column) {
    switch (column) {
    case TableColumn::Name:
        return "IDS_TXT_FILENAME";
    case TableColumn::Duration:
        return "IDS_TXT_DURATION";
    case TableColumn::Audio:
        return "IDS_TXT_AUDIO";
    case TableColumn::Res:
        return "IDS_TXTFLD_RESOLUTION";
    case TableColumn::Cmb:
        return "IDS_TXTFLD_QUALITY";
    case TableColumn::Progress:
        return "IDS_TXT_STATUS";
    case TableColumn::Check:
    case TableColumn::Im:
        break;
    }
    return nullptr;
}

TableColumn columnAt(int section) {
    return static_cast<TableColumn>(section);
}

} // namespace

FileTableModel::FileTableModel(FileList& list, SharedState& state, TableEditing& editing,
                               ActionGate& gate, QObject* parent)
    : QAbstractTableModel(parent),
      list_(list),
      editing_(editing),
      gate_(gate),
      source_(list, state) {}

int FileTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rowCount_;
}

int FileTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : tableColumnCount;
}

QVariant FileTableModel::data(const QModelIndex& index, int role) const {
    if (!isOwn(index))
        return {};
    const int row = listRow(index.row());
    if (!source_.isShown(row))
        return {};
    const TableColumn column = columnAt(index.column());
    switch (role) {
    case Qt::DisplayRole:
        return column == TableColumn::Check || column == TableColumn::Im
                   ? QVariant()
                   : source_.shownText(column, row);
    case Qt::EditRole:
        return source_.shownText(column, row);
    case Qt::CheckStateRole:
        if (column == TableColumn::Check)
            return source_.isChecked(row) ? Qt::Checked : Qt::Unchecked;
        break;
    case Qt::DecorationRole:
        if (column == TableColumn::Check)
            return icon(FileTableSource::willDisplayCellImage(identifierOf(column)));
        if (column == TableColumn::Im)
            return icon(source_.imageAt(row));
        break;
    case Qt::AccessibleTextRole:
        return source_.spokenText(column, row);
    case Qt::AccessibleDescriptionRole:
        return source_.toolTip(column, row);
    case Qt::ToolTipRole: {
        const QString tip = source_.toolTip(column, row);
        if (tip.isEmpty())
            return {};
        // A movie may be called anything, also something that looks like markup.
        return Qt::mightBeRichText(tip) ? QString(QStringLiteral("<span>") + tip.toHtmlEscaped() +
                                                  QStringLiteral("</span>"))
                                        : tip;
    }
    case IdRole:
        return source_.idAt(row);
    default:
        return column == TableColumn::Progress ? progressData(row, role) : QVariant();
    }
    return {};
}

QVariant FileTableModel::progressData(int row, int role) const {
    const std::shared_ptr<const ProgressObject> progress = source_.progressAt(row);
    switch (role) {
    case ProgressCell::StatusTextRole:
        return source_.shownText(TableColumn::Progress, row);
    case ProgressCell::StepTextRole:
        return progress->textProgress().text();
    case ProgressCell::BarProgressRole:
        return progress->textProgress().progress();
    case ProgressCell::ShowsBarRole:
        return progress->showsBar();
    case ProgressCell::ProgressStatusRole:
        return progress->statusString();
    default:
        return {};
    }
}

QVariant FileTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= tableColumnCount)
        return {};
    const TableColumn column = columnAt(section);
    const char* const key = headerKey(column);
    if (role == Qt::DisplayRole)
        return key ? getLocalString(key) : QString();
    if (role == Qt::AccessibleTextRole)
        return getLocalString(key                            ? key
                              : column == TableColumn::Check ? "IDS_A11Y_COLUMN_CHECK"
                                                             : "IDS_A11Y_COLUMN_BUTTON");
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
    return {};
}

Qt::ItemFlags FileTableModel::flags(const QModelIndex& index) const {
    if (!isOwn(index))
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    const TableColumn column = columnAt(index.column());
    if (source_.willDisplayCellEnabled(identifierOf(column)))
        flags |= Qt::ItemIsEnabled;
    // A button that is pressed with an unsteady hand is pressed all the same.
    if (column != TableColumn::Check && column != TableColumn::Im)
        flags |= Qt::ItemIsDragEnabled;
    if (column == TableColumn::Check)
        flags |= Qt::ItemIsUserCheckable;
    else if (editing_.isEditable(identifierOf(column)))
        flags |= Qt::ItemIsEditable;
    return flags;
}

QStringList FileTableModel::offeredTexts(const QModelIndex& index) const {
    if (!isOwn(index))
        return {};
    return source_.dataCellForTableColumn(identifierOf(columnAt(index.column())),
                                          listRow(index.row()));
}

int FileTableModel::rowOfId(int id) const {
    const std::optional<int> row = list_.rowOfId(id);
    return row && goneRanges_.empty() && *row < rowCount_ ? *row : -1;
}

bool FileTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!isOwn(index))
        return false;
    const TableColumn column = columnAt(index.column());
    const bool isCheck = column == TableColumn::Check;
    if (role != (isCheck ? Qt::CheckStateRole : Qt::EditRole))
        return false;
    if (column == TableColumn::Res && !TableEditing::isPictureSize(value.toString()))
        return false;
    const QVariant stored =
        isCheck ? QVariant(value.toInt() == Qt::Checked ? 1 : 0) : QVariant(value.toString());
    const int id = source_.idAt(listRow(index.row()));
    // After a wait the row may stand elsewhere, or be gone, or be locked by a run.
    const auto done = std::make_shared<bool>(false);
    gate_.pass([=, this] { *done = store(column, stored, rowOfId(id)); },
               [=, this] { return rowOfId(id) >= 0 && editing_.isEditable(identifierOf(column)); });
    return *done;
}

void FileTableModel::checkRows(const std::vector<int>& rows, bool checked) {
    std::vector<int> ids;
    for (const int row : rows)
        ids.push_back(source_.idAt(listRow(row)));
    gate_.pass([=, this] {
        int last = -1;
        for (const int id : ids) {
            const int row = rowOfId(id);
            if (row < 0)
                continue;
            list_.setCheck(row, checked ? 1 : 0);
            last = row;
        }
        if (last >= 0)
            store(TableColumn::Check, checked ? 1 : 0, last);
    });
}

bool FileTableModel::store(TableColumn column, const QVariant& value, int row) {
    const std::optional<bool> headerState = editing_.storeEdit(identifierOf(column), value, row);
    reload();
    if (headerState)
        Q_EMIT headerStateChanged(*headerState);
    return true;
}

void FileTableModel::reload() {
    const int rows = list_.completeRows();
    if (rows < rowCount_) {
        beginRemoveRows({}, rows, rowCount_ - 1);
        rowCount_ = rows;
        endRemoveRows();
    }
    if (rowCount_ > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount_ - 1, tableColumnCount - 1));
    rowsWereAdded();
}

void FileTableModel::rowsWereAdded() {
    const int rows = list_.completeRows();
    if (rows <= rowCount_)
        return;
    beginInsertRows({}, rowCount_, rows - 1);
    rowCount_ = rows;
    endInsertRows();
}

void FileTableModel::rowsWereRemoved(std::vector<int> rows) {
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    rows.erase(std::remove_if(rows.begin(), rows.end(),
                              [this](int row) { return row < 0 || row >= rowCount_; }),
               rows.end());
    std::vector<Range> ranges;
    for (const int row : rows) {
        if (!ranges.empty() && ranges.back().last + 1 == row)
            ranges.back().last = row;
        else
            ranges.push_back({row, row});
    }
    if (static_cast<int>(ranges.size()) > mostRanges) {
        Q_EMIT aboutToThinOut();
        beginResetModel();
        rowCount_ -= static_cast<int>(rows.size());
        endResetModel();
        Q_EMIT thinnedOut(rows);
        return;
    }
    goneRanges_ = std::move(ranges);
    while (!goneRanges_.empty()) {
        const Range range = goneRanges_.back();
        beginRemoveRows({}, range.first, range.last);
        rowCount_ -= range.size();
        goneRanges_.pop_back();
        endRemoveRows();
    }
}

void FileTableModel::rowChanged(int row) {
    if (row >= 0 && row < rowCount_)
        Q_EMIT dataChanged(index(row, 0), index(row, tableColumnCount - 1));
}

int FileTableModel::listRow(int row) const {
    int gone = 0;
    for (const Range& range : goneRanges_) {
        if (row < range.first)
            break;
        if (row <= range.last)
            return -1;
        gone += range.size();
    }
    return row - gone;
}

bool FileTableModel::isOwn(const QModelIndex& index) const {
    return index.model() == this && index.row() >= 0 && index.row() < rowCount_ &&
           index.column() >= 0 && index.column() < tableColumnCount;
}

const QIcon& FileTableModel::icon(const QString& image) const {
    const auto known = icons_.constFind(image);
    if (known != icons_.cend())
        return *known;
    return *icons_.insert(image,
                          image.isEmpty() ? QIcon() : drawnImage(QFileInfo(image).baseName()));
}

#pragma once

#include "filelist/ListObserver.h"
#include "table/FileTableSource.h"
#include "table/TableEditing.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>

class ActionGate;

/// The list as the window's table shows it. It learns of rows through reload() and
/// rowsWereRemoved() alone, so that lists which are just being changed are never shown half done;
/// until then it goes on with the rows that it knows. Main thread; owned by main().
class FileTableModel final : public QAbstractTableModel, public ListObserver {
    Q_OBJECT

public:
    enum Role { IdRole = Qt::UserRole }; ///< "id" of the row; ProgressCell's roles come beside it

    /// More separate ranges than this are announced as one reset.
    static constexpr int mostRanges = 100;

    FileTableModel(FileList& list, SharedState& state, TableEditing& editing, ActionGate& gate,
                   QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(FileTableModel)

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

    [[nodiscard]] const FileTableSource& source() const { return source_; }
    [[nodiscard]] ActionGate& gate() const { return gate_; }
    /// What the editor of a cell offers.
    [[nodiscard]] QStringList offeredTexts(const QModelIndex& index) const;
    /// State that the header's check box should have.
    [[nodiscard]] bool allChecked() const { return list_.allChecked(); }
    [[nodiscard]] int rowOfId(int id) const;

    /// Takes an edit if the action gate is open, later if a wait is on; true when it was stored.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    /// Checks or unchecks rows in one edit, now or after the wait that is on.
    void checkRows(const std::vector<int>& rows, bool checked);
    /// Shows what the lists hold now: rows at the end come and go, all others are shown anew.
    void reload() override;
    void rowsWereAdded() override;
    void rowsWereRemoved(std::vector<int> rows) override;
    void rowChanged(int row) override;
    /// Kept without effect: the check boxes go on showing the rows' states.
    void didClickTableColumn() { reload(); }

Q_SIGNALS:
    /// After an edit of a list that is not empty.
    void headerStateChanged(bool allChecked);
    /// Around a reset that takes rows out: what the view must put back is known before...
    void aboutToThinOut();
    /// ...and the removed rows, ascending, after.
    void thinnedOut(const std::vector<int>& removed);

private:
    struct Range {
        int first;
        int last;
        [[nodiscard]] int size() const { return last - first + 1; }
    };

    /// Where a row of the model stands in the lists, -1 when it is gone from them already.
    [[nodiscard]] int listRow(int row) const;
    [[nodiscard]] bool isOwn(const QModelIndex& index) const;
    [[nodiscard]] QVariant progressData(int row, int role) const;
    [[nodiscard]] const QIcon& icon(const QString& image) const;
    bool store(TableColumn column, const QVariant& value, int row);

    FileList& list_;
    TableEditing& editing_;
    ActionGate& gate_;
    FileTableSource source_;
    int rowCount_ = 0;
    std::vector<Range> goneRanges_; ///< ascending: gone from the lists, not announced yet
    mutable QHash<QString, QIcon> icons_;
};

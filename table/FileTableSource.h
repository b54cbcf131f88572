#pragma once

#include "filelist/FileList.h"
#include "media/ResolutionCatalogue.h"
#include "table/FileTableColumns.h"

#include <QVariant>

/// Answers what the list shows, row by row, from the records and the lists beside them.
/// The answers under the names of a data source are strict and throw std::out_of_range; the shown
/// ones answer nothing for a row that is not complete. Main thread; owned by the model.
class FileTableSource final {
public:
    FileTableSource(const FileList& list, const SharedState& state) : list_(list), state_(state) {}
    Q_DISABLE_COPY_MOVE(FileTableSource)

    [[nodiscard]] int numberOfRowsInTableView() const { return list_.rowCount(); }
    /// An invalid value for the columns that are not answered from a list. "progress" is the step
    /// as a number, which is not what the cell paints.
    [[nodiscard]] QVariant objectValueForTableColumn(const QString& identifier, int row) const;
    /// Whether a cell of this column is enabled now: quality and size are locked during a run.
    [[nodiscard]] bool willDisplayCellEnabled(const QString& identifier) const;
    /// Name of the image that the cell is drawn with; empty for all columns but the check boxes'.
    [[nodiscard]] static QString willDisplayCellImage(const QString& identifier);
    /// What a column's cell offers before any row: the three qualities, kept in both columns
    /// with a list. A row's own sizes take their place.
    [[nodiscard]] static QStringList startingCellForTableColumn(const QString& identifier);
    /// What the editor of a cell offers: the row's sizes or the three qualities.
    [[nodiscard]] QStringList dataCellForTableColumn(const QString& identifier, int row) const;
    /// What the size column's own cell offers when every row has put its sizes into it in turn:
    /// the last one decides. `cell` is what it offered before. Nothing calls it.
    [[nodiscard]] QStringList updateResolutionCell(QStringList cell) const;
    [[nodiscard]] bool shouldSelectRow(int row) const;
    [[nodiscard]] int numberOfItemsInComboBox() const;
    /// A null text where the asking combo box is not the main one.
    [[nodiscard]] QString comboBoxObjectValueForItemAtIndex(bool isMainComboBox, int index) const;

    /// Whether `row` is complete in every list.
    [[nodiscard]] bool isShown(int row) const { return row >= 0 && row < list_.completeRows(); }
    [[nodiscard]] bool isChecked(int row) const;
    [[nodiscard]] int idAt(int row) const;
    /// What the cell shows, empty for the two columns that show a picture.
    [[nodiscard]] QString shownText(TableColumn column, int row) const;
    /// What a screen reader reads for the cell.
    [[nodiscard]] QString spokenText(TableColumn column, int row) const;
    [[nodiscard]] QString toolTip(TableColumn column, int row) const;
    /// Image name of the row's button.
    [[nodiscard]] QString imageAt(int row) const;
    /// Whether the movie that the row's button acts on has the image that is shown: after rows were
    /// dragged it is another one.
    [[nodiscard]] bool isButtonTrue(int row) const;
    /// Null where the row is not complete.
    [[nodiscard]] std::shared_ptr<const ProgressObject> progressAt(int row) const;

private:
    [[nodiscard]] QString textOverStatus(int row) const;
    [[nodiscard]] QString tipOfList(TableColumn column, const char* text, int row) const;
    [[nodiscard]] QStringList sizesOf(const JobRecord& record) const;

    const FileList& list_;
    const SharedState& state_;
    ResolutionCatalogue sizes_;
};

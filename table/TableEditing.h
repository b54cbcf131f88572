#pragma once

#include "filelist/FileList.h"

#include <QVariant>

#include <optional>

/// What an edit of a cell and a choice in the main quality list write into the records and the
/// lists beside them. A number out of range throws std::out_of_range. Main thread; owned by
/// main().
class TableEditing final {
public:
    TableEditing(FileList& list, SharedState& state) : list_(list), state_(state) {}
    Q_DISABLE_COPY_MOVE(TableEditing)

    /// Whether `text` is a picture size: digits, x, digits.
    [[nodiscard]] static bool isPictureSize(const QString& text);
    /// Whether a cell of this column takes an edit now.
    [[nodiscard]] bool isEditable(const QString& identifier) const;

    /// Stores an edit and brings the records in line with the lists. Answers the state that the
    /// header's check box takes, nothing for an empty list.
    std::optional<bool> storeEdit(const QString& identifier, const QVariant& value, int row);
    /// Gives quality `item` to every checked row; with none checked, to the selected row's record
    /// alone (`selectedRow` is -1 where none is). Throws for a profile name shorter than nine
    /// characters.
    void comboBoxSelectionDidChange(int item, int selectedRow);

private:
    void bringRecordsInLine();

    FileList& list_;
    SharedState& state_;
};

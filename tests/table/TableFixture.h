#pragma once

#include "platform/MainThread.h"
#include "table/FileTableModel.h"
#include "widgets/ActionGate.h"

#include <QStringList>

#include <memory>

/// Lists with made-up movies, and the model over them. Rows are appended to the lists alone: the
/// model hears of them from the test.
class TableFixture final {
public:
    TableFixture();
    Q_DISABLE_COPY_MOVE(TableFixture)

    /// Appends a waiting row of size 1920x1080; its id.
    int addRow(const QString& name);
    void addRows(int count);
    /// Takes rows out of the lists, from the last to the first, and tells the model.
    void removeRows(const std::vector<int>& rows);
    [[nodiscard]] QString shown(int row, TableColumn column) const;
    [[nodiscard]] QModelIndex cell(int row, TableColumn column) const;

    FileList list;
    SharedState state;
    MainThread mainThread;
    ActionGate gate{mainThread};
    TableEditing editing{list, state};
    FileTableModel model{list, state, editing, gate};
};

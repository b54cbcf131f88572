#pragma once

#include "table/FileTableView.h"
#include "table/TableFixture.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QTest>

#include <set>

/// A shown table over made-up rows.
struct TableWindow {
    explicit TableWindow(int rows) {
        f.addRows(rows);
        view.setFileModel(&f.model);
        f.model.reload();
        view.resize(900, 400);
        view.show();
        view.activateWindow();
        view.setFocus();
        (void)QTest::qWaitForWindowActive(&view);
    }

    [[nodiscard]] QPoint center(int row, TableColumn column) const {
        return view.visualRect(f.cell(row, column)).center();
    }
    void click(int row, TableColumn column, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, center(row, column));
    }
    /// As the window system tells of it: a click, and a second one whose press is told apart.
    void doubleClick(int row, TableColumn column) {
        click(row, column);
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, center(row, column));
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, center(row, column));
    }
    void key(int row, TableColumn column, Qt::Key which) {
        view.setCurrentIndex(f.cell(row, column));
        QTest::keyClick(&view, which);
    }
    [[nodiscard]] QComboBox* editor() const {
        return qobject_cast<QComboBox*>(view.openedEditor());
    }
    [[nodiscard]] bool isListOpen() const { return editor() && editor()->view()->isVisible(); }
    [[nodiscard]] QAccessibleInterface* accessible() {
        return QAccessible::queryAccessibleInterface(&view);
    }
    [[nodiscard]] QAccessibleInterface* accessibleCell(int row, TableColumn column) {
        return accessible()->tableInterface()->cellAt(row, static_cast<int>(column));
    }
    [[nodiscard]] std::set<int> selection() const {
        std::set<int> rows;
        for (const QModelIndex& each : view.selectionModel()->selectedRows())
            rows.insert(each.row());
        return rows;
    }

    TableFixture f;
    FileTableView view;
};

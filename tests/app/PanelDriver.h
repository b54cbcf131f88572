#pragma once

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>

/// Runs `then` once, from the event loop, as soon as `ready` answers true.
inline void once(std::function<bool()> ready, std::function<void()> then) {
    auto* const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer,
                     [timer, ready = std::move(ready), then = std::move(then)] {
                         if (!ready())
                             return;
                         timer->stop();
                         timer->deleteLater();
                         then();
                     });
    timer->start(1);
}

/// Drives Qt's own panel for files and folders as its user does. What `then` leaves open is
/// cancelled, so that a failure in it cannot hang the test.
inline void oncePanelOpen(std::function<void(QFileDialog&)> then) {
    const auto panel = [] { return qobject_cast<QFileDialog*>(QApplication::activeModalWidget()); };
    once([panel] { return panel() && panel()->isVisible(); },
         [panel, then = std::move(then)] {
             const QPointer<QFileDialog> open = panel();
             then(*open);
             if (open && open->isVisible())
                 open->reject();
         });
}

/// Names that the panel lists in its folder; call until they are what is expected.
inline QStringList listedNames(const QFileDialog& panel) {
    const auto* const view = panel.findChild<QListView*>(QStringLiteral("listView"));
    QStringList names;
    for (int row = 0; row < view->model()->rowCount(view->rootIndex()); ++row)
        names += view->model()->index(row, 0, view->rootIndex()).data().toString();
    names.sort();
    return names;
}

/// Selects entries of the panel's list by name; false where one is not listed.
inline bool selectNames(const QFileDialog& panel, const QStringList& names) {
    auto* const view = panel.findChild<QListView*>(QStringLiteral("listView"));
    view->selectionModel()->clear();
    int selected = 0;
    for (int row = 0; row < view->model()->rowCount(view->rootIndex()); ++row) {
        const QModelIndex index = view->model()->index(row, 0, view->rootIndex());
        if (!names.contains(index.data().toString()))
            continue;
        view->selectionModel()->select(index,
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
        ++selected;
    }
    return selected == names.size();
}

inline void typeIntoPanel(const QFileDialog& panel, const QString& text) {
    panel.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(text);
}

/// Presses the panel's Open or Choose button.
inline void confirmPanel(const QFileDialog& panel) {
    panel.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
}

#pragma once

#include "app/RunChecks.h"
#include "platform/MainThread.h"
#include "table/DraggedRows.h"
#include "table/FileTableView.h"
#include "table/RowDrag.h"

#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QMimeData>
#include <QUrl>

// Drops as the window system tells of them. Main thread.

inline constexpr Qt::DropActions everyAction = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;

/// What the table answered at each step of a drop; Ignore where it did not accept the event.
struct DropAnswers {
    Qt::DropAction enter = Qt::IgnoreAction;
    Qt::DropAction move = Qt::IgnoreAction;
    Qt::DropAction drop = Qt::IgnoreAction;

    bool operator==(const DropAnswers&) const = default;
};

/// Something that is dragged over the table of a program.
class Drop final {
public:
    explicit Drop(ControllerFixture& program)
        : table(*program.widget<FileTableView>("theTableNew")) {}

    [[nodiscard]] static Drop ofUrls(ControllerFixture& program, const QList<QUrl>& urls) {
        Drop drop(program);
        drop.mime->setUrls(urls);
        return drop;
    }
    [[nodiscard]] static Drop ofFiles(ControllerFixture& program, const QStringList& paths) {
        QList<QUrl> urls;
        for (const QString& each : paths)
            urls += QUrl::fromLocalFile(each);
        return ofUrls(program, urls);
    }
    [[nodiscard]] static Drop of(ControllerFixture& program, const QString& type,
                                 const QByteArray& data) {
        Drop drop(program);
        drop.mime->setData(type, data);
        return drop;
    }
    [[nodiscard]] static Drop ofRows(ControllerFixture& program, const std::vector<int>& rows) {
        return of(program, draggedRowsType, archiveRows(rows));
    }

    Qt::DropAction enter(QPoint at) { return tell<QDragEnterEvent>(at); }
    Qt::DropAction move(QPoint at) { return tell<QDragMoveEvent>(at); }
    void leave() {
        QDragLeaveEvent event;
        QCoreApplication::sendEvent(table.viewport(), &event);
    }
    /// The whole way, to the drop.
    DropAnswers at(QPoint position) {
        DropAnswers answers;
        answers.enter = enter(position);
        answers.move = move(position);
        QDropEvent event(position, offered, mime.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(table.viewport(), &event);
        answers.drop = event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
        return answers;
    }
    DropAnswers behindTheRows() { return at(table.viewport()->rect().center()); }

    FileTableView& table;
    std::unique_ptr<QMimeData> mime = std::make_unique<QMimeData>();
    Qt::DropActions offered = everyAction;

private:
    template <typename Event> Qt::DropAction tell(QPoint at) {
        Event event(at, offered, mime.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(table.viewport(), &event);
        return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }
};

inline constexpr DropAnswers takenAnswers{Qt::CopyAction, Qt::CopyAction, Qt::CopyAction};
/// Kept: movies are added, and the program that offers them hears that they were not taken.
inline constexpr DropAnswers moviesAnswers{Qt::CopyAction, Qt::CopyAction, Qt::IgnoreAction};

/// Waits until everything that a drop has begun is over; false after 120 s.
[[nodiscard]] inline bool settle(ControllerFixture& program) {
    bool isReached = false;
    QMetaObject::invokeMethod(
        &program.rowDrag(), [&] { isReached = true; }, Qt::QueuedConnection);
    return QTest::qWaitFor(
        [&] {
            return isReached && !program.mainThread().isWaiting() &&
                   !QApplication::activeModalWidget();
        },
        120000);
}

[[nodiscard]] inline QStringList namesOf(const std::vector<JobRecordPtr>& records) {
    QStringList names;
    for (const JobRecordPtr& each : records)
        names += each->text(key::name);
    return names;
}

/// Adds movies called a.mp4, b.mp4 and so on.
inline QStringList addMovies(ControllerFixture& program, int count) {
    QStringList paths;
    for (int i = 0; i < count; ++i)
        paths += program.movie(QChar(char16_t('a' + i)) + QStringLiteral(".mp4")).write();
    program.add(paths);
    return paths;
}

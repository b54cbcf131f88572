#include "bench/TraceNotes.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QLoggingCategory>

#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

namespace {

constexpr int statusColumn = 6;
constexpr int mostRows = 4; // more at a time are no job's doing

int traceFile() {
    static const int file = [] {
        const char* const path = std::getenv("REELSHIFT_BENCH_TRACE");
        return path ? ::open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600) : -1;
    }();
    return file;
}

void takeMessage(QtMsgType, const QMessageLogContext& context, const QString& text) {
    TraceNotes::note("says " + QByteArray(context.category) + ' ' + text.toUtf8());
}

} // namespace

void TraceNotes::note(const QByteArray& line) {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    const qint64 nanoseconds = qint64{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
    QByteArray whole = QByteArray::number(nanoseconds) + ' ' +
                       QByteArray::number(qint64{::getpid()}) + ' ' +
                       QByteArray::number(qint64{::syscall(SYS_gettid)}) + ' ' + line;
    whole.replace('\n', ' ');
    whole += '\n';
    if (traceFile() >= 0) [[maybe_unused]]
        const ssize_t written =
            ::write(traceFile(), whole.constData(), static_cast<size_t>(whole.size()));
}

void TraceNotes::begin(QAbstractItemModel& model, QObject* context) {
    if (traceFile() < 0)
        return;
    qInstallMessageHandler(takeMessage);
    QLoggingCategory::setFilterRules(QStringLiteral("reelshift.convert.debug=true"));
    const auto shown = std::make_shared<QHash<int, QString>>();
    QObject::connect(
        &model, &QAbstractItemModel::dataChanged, context,
        [&model, shown](const QModelIndex& first, const QModelIndex& last) {
            if (last.row() - first.row() >= mostRows)
                return;
            for (int row = first.row(); row <= last.row(); ++row) {
                const QString text =
                    model.index(row, statusColumn).data(Qt::AccessibleTextRole).toString();
                if (std::exchange((*shown)[row], text) != text)
                    note("shows " + QByteArray::number(row) + ' ' + text.toUtf8());
            }
        });
}

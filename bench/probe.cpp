// Loaded into the very program that users get (LD_PRELOAD), to use it and to measure it from
// inside. The program is not built for it and knows nothing of it.
//
//     REELSHIFT_BENCH_DO=wait:SECONDS;hold:SECONDS;add:FILE;convert;check;quality:N;remove;quit
//     REELSHIFT_BENCH_OUT=FILE       a line of JSON per step
//     REELSHIFT_BENCH_SECOND=MS      every wait of one second ends after that time
//     REELSHIFT_BENCH_TRACER=FILE    preloaded into what the program starts (trace.cpp)
//
// add drops the movies that FILE names, a line each, on the table; convert presses Convert, waits
// for the summary and presses its first button. check clicks Select All, quality chooses the Nth of
// the list for all that are checked, remove presses Remove Checked: each until what it has changed
// is painted. hold keeps the main loop from turning, to see that this is noticed.

#include "bench/LoopClock.h"
#include "bench/TraceNotes.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QFile>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QTableView>
#include <QThread>
#include <QTimer>
#include <QUrl>

#include <cstdlib>
#include <memory>

#include <sys/resource.h>

namespace {

double cpuSeconds(int who) {
    rusage used{};
    getrusage(who, &used);
    return static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
           static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec) / 1e6;
}

qint64 residentKiB() {
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith("Rss:"))
            return line.mid(4).trimmed().split(' ').first().toLongLong();
    }
    return 0;
}

template <typename Widget> Widget* find(const char* name) {
    for (QWidget* const top : QApplication::topLevelWidgets()) {
        if (auto* const found = top->findChild<Widget*>(QString::fromLatin1(name)))
            return found;
    }
    return nullptr;
}

/// Carries the steps out one after the other. Lives as long as the application.
class Steps final : public QObject {
public:
    explicit Steps(QObject* parent)
        : QObject(parent),
          steps_(QString::fromLocal8Bit(qgetenv("REELSHIFT_BENCH_DO")).split(u';')),
          out_(QString::fromLocal8Bit(qgetenv("REELSHIFT_BENCH_OUT"))) {
        isClockOn_ = LoopClock::start();
        if (!out_.open(QIODevice::WriteOnly | QIODevice::Append))
            qFatal("REELSHIFT_BENCH_OUT cannot be written");
        QTimer::singleShot(0, this, [this] { begin(); });
    }

private:
    void begin() {
        if (steps_.isEmpty())
            return;
        step_ = steps_.takeFirst();
        const QString what = step_.section(u':', 0, 0);
        const QString with = step_.section(u':', 1);
        reset();
        if (what == QStringLiteral("wait"))
            QTimer::singleShot(static_cast<int>(with.toDouble() * 1000), this, [this] { end(); });
        else if (what == QStringLiteral("hold"))
            hold(with.toDouble());
        else if (what == QStringLiteral("add"))
            add(with);
        else if (what == QStringLiteral("convert"))
            convert();
        else if (what == QStringLiteral("check"))
            untilPainted([] { find<QAbstractButton>("btnSelectAll")->click(); });
        else if (what == QStringLiteral("quality"))
            untilPainted([with] { choose(*find<QComboBox>("comboBox"), with.toInt()); });
        else if (what == QStringLiteral("remove"))
            untilPainted([] { find<QPushButton>("btnRemoveFile")->click(); });
        else if (what == QStringLiteral("quit"))
            find<QWidget>("theTableNew")->window()->close();
    }

    void reset() {
        ownAtBegin_ = cpuSeconds(RUSAGE_SELF);
        childrenAtBegin_ = cpuSeconds(RUSAGE_CHILDREN);
        timer_.start();
    }

    /// The gap is the longest one since the step before was noted.
    void note() {
        const double seconds = static_cast<double>(timer_.nsecsElapsed()) / 1e9;
        const double own = cpuSeconds(RUSAGE_SELF) - ownAtBegin_;
        const double children = cpuSeconds(RUSAGE_CHILDREN) - childrenAtBegin_;
        long turns = 0;
        const LoopClock::Gap gap = LoopClock::takeLongest(turns);
        out_.write(QStringLiteral("{\"step\": \"%1\", \"seconds\": %2, \"own_cpu\": %3, "
                                  "\"children_cpu\": %4, \"gap_ms\": %5, \"gap_cpu_ms\": %6, "
                                  "\"gap_queued_ms\": %7, \"turns\": %8, \"clock\": %9, "
                                  "\"rows\": %10, \"rss_kib\": %11}\n")
                       .arg(step_.section(u':', 0, 0))
                       .arg(seconds, 0, 'f', 6)
                       .arg(own, 0, 'f', 6)
                       .arg(children, 0, 'f', 6)
                       .arg(gap.milliseconds, 0, 'f', 3)
                       .arg(gap.cpuMilliseconds, 0, 'f', 3)
                       .arg(gap.queuedMilliseconds, 0, 'f', 3)
                       .arg(turns)
                       .arg(isClockOn_ ? 1 : 0)
                       .arg(find<QTableView>("theTableNew")->model()->rowCount())
                       .arg(residentKiB())
                       .toUtf8());
        out_.flush();
    }

    void end() {
        note();
        QTimer::singleShot(0, this, [this] { begin(); });
    }

    void hold(double seconds) {
        QThread::usleep(static_cast<unsigned long>(seconds * 1e6));
        // A gap ends with the next poll.
        QTimer::singleShot(50, this, [this] { end(); });
    }

    /// "LIST" or, where a folder stands for several movies, "LIST,ROWS".
    void add(const QString& listAndRows) {
        QFile file(listAndRows.section(QLatin1Char(','), 0, 0));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("the list of movies cannot be read");
        QList<QUrl> urls;
        for (const QByteArray& line : file.readAll().split('\n')) {
            if (!line.isEmpty())
                urls += QUrl::fromLocalFile(QString::fromLocal8Bit(line));
        }
        auto* const table = find<QTableView>("theTableNew");
        const int rows = listAndRows.section(QLatin1Char(','), 1).toInt();
        const int wanted =
            table->model()->rowCount() + (rows > 0 ? rows : static_cast<int>(urls.size()));
        const auto watch = std::make_shared<QMetaObject::Connection>();
        *watch = connect(table->model(), &QAbstractItemModel::rowsInserted, this,
                         [this, table, wanted, watch] {
                             if (table->model()->rowCount() < wanted)
                                 return;
                             disconnect(*watch);
                             // The add comes to its end before the loop turns again.
                             QTimer::singleShot(0, this, [this] { end(); });
                         });
        QMimeData mime;
        mime.setUrls(urls);
        const QPoint place = table->viewport()->rect().center();
        const Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction;
        QDragEnterEvent enter(place, offered, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(table->viewport(), &enter);
        QDragMoveEvent move(place, offered, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(table->viewport(), &move);
        QDropEvent drop(place, offered, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(table->viewport(), &drop);
    }

    static void choose(QComboBox& list, int item) {
        list.setCurrentIndex(item);
        // Only what the user chooses counts.
        QMetaObject::invokeMethod(&list, "activated", Q_ARG(int, item));
    }

    template <typename Action> void untilPainted(Action action) {
        painted_ = find<QTableView>("theTableNew")->viewport();
        qApp->installEventFilter(this);
        action();
    }

    void convert() {
        TraceNotes::begin(*find<QTableView>("theTableNew")->model(), this);
        TraceNotes::note("presses Convert");
        qApp->installEventFilter(this);
        find<QPushButton>("btnConvertFile")->click();
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (painted_) {
            if (watched != painted_ || event->type() != QEvent::Paint)
                return false;
            painted_ = nullptr;
            qApp->removeEventFilter(this);
            QTimer::singleShot(0, this, [this] { end(); });
            return false;
        }
        auto* const box = event->type() == QEvent::Show ? qobject_cast<QDialog*>(watched) : nullptr;
        if (!box)
            return false;
        qApp->removeEventFilter(this);
        TraceNotes::note("shows the summary");
        note();
        const QPointer<QDialog> summary = box;
        QTimer::singleShot(0, this, [this, summary] { answer(summary); });
        return false;
    }

    void answer(const QPointer<QDialog>& summary) {
        auto* const button =
            summary ? summary->findChild<QPushButton*>(QStringLiteral("popUpButton1000")) : nullptr;
        if (button)
            button->click();
        // In the box's own loop still: what comes next waits until it is left.
        QTimer::singleShot(200, this, [this] { begin(); });
    }

    QStringList steps_;
    QString step_;
    QFile out_;
    const QObject* painted_ = nullptr; ///< what the step waits for the painting of
    bool isClockOn_ = false;
    QElapsedTimer timer_;
    double ownAtBegin_ = 0;
    double childrenAtBegin_ = 0;
};

void startSteps() {
    // Not for the application without a window that looks at the command line first.
    if (!qEnvironmentVariableIsSet("REELSHIFT_BENCH_DO") ||
        !QCoreApplication::instance()->inherits("QApplication"))
        return;
    // The encoder is not to be measured.
    if (const char* const tracer = std::getenv("REELSHIFT_BENCH_TRACER"))
        setenv("LD_PRELOAD", tracer, 1);
    else
        unsetenv("LD_PRELOAD");
    new Steps(QCoreApplication::instance());
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(startSteps)

// What a long list costs: the real controller and its window over rows that no probe has made.
//
//     list_bench ROWS             a line "NAME VALUE" per figure, milliseconds or bytes

#include "app/AppDelegate.h"
#include "app/FakeDesktop.h"
#include "app/ProgramParts.h"
#include "bench/LoopClock.h"
#include "filelist/ProgressObject.h"
#include "platform/LocalizedStrings.h"
#include "platform/desktop/FileManager.h"
#include "platform/desktop/VolumeInfo.h"
#include "table/FileTableView.h"
#include "table/MadeUpRow.h"
#include "ui_MainWindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QFile>
#include <QHeaderView>
#include <QLocale>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QWindow>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace {

constexpr int scrollSteps = 200;
constexpr int edits = 10;
constexpr int quietTime = 500; // ms; what is put off for a moment comes within

double milliseconds(qint64 nanoseconds) {
    return static_cast<double>(nanoseconds) / 1e6;
}

void print(const char* name, double value) {
    std::printf("%s %.3f\n", name, value);
    std::fflush(stdout);
}

/// Times every paint event of one widget.
class TimedApplication final : public QApplication {
public:
    using QApplication::QApplication;

    const QObject* painted = nullptr;
    std::vector<double> paints;

    bool notify(QObject* receiver, QEvent* event) override {
        if (receiver != painted || event->type() != QEvent::Paint)
            return QApplication::notify(receiver, event);
        QElapsedTimer timer;
        timer.start();
        const bool result = QApplication::notify(receiver, event);
        paints.push_back(milliseconds(timer.nsecsElapsed()));
        return result;
    }
};

double residentBytes() {
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith("Rss:"))
            return line.mid(4).trimmed().split(' ').at(0).toDouble() * 1024;
    }
    return 0;
}

/// The window with its list, and what a user does to it.
class Bench final {
public:
    Bench(TimedApplication& application, ProgramParts& parts)
        : application_(application), parts_(parts), view_(*parts.window.form().theTableNew) {
        application_.painted = view_.viewport();
    }

    /// Until the window is on the screen in its full size.
    void waitForWindow() {
        const MainWindow& window = parts_.window;
        const auto isThere = [&] {
            return window.windowHandle() && window.windowHandle()->isExposed() &&
                   window.width() >= window.screen()->availableSize().width() &&
                   !application_.paints.empty();
        };
        QElapsedTimer timer;
        timer.start();
        while (!isThere()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
            if (timer.elapsed() > 30000)
                qFatal("the window did not come");
        }
        settle();
    }

    void settle() {
        QElapsedTimer quiet;
        quiet.start();
        while (quiet.elapsed() < quietTime)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }

    void addRows(int count) {
        FileList& files = parts_.files;
        for (int i = 0; i < count; ++i) {
            addMadeUpRow(files, parts_.state,
                         QStringLiteral("IMG_20240%1_%2.mp4").arg(i % 10).arg(i, 6));
            // One row in seven shows a bar.
            if (i % 7 == 0) {
                files.progressObjects.back()->incrementStep(i % 100);
                files.progressObjects.back()->setBar((i % 100) / 100.0);
            }
        }
        view_.fileModel()->reload();
        parts_.window.form().btnRemoveFile->setEnabled(true);
        view_.btnSelectAll()->setChecked(true);
    }

    /// Does something and lets the window show it; how long that took.
    template <typename Action> double untilPainted(Action action) {
        const auto paintsBefore = application_.paints.size();
        QElapsedTimer timer;
        timer.start();
        action();
        while (application_.paints.size() == paintsBefore) {
            QCoreApplication::processEvents();
            if (timer.elapsed() > 20000)
                qFatal("nothing was painted");
        }
        return milliseconds(timer.nsecsElapsed());
    }

    /// The same, or how long the main loop was held afterwards where that is longer.
    template <typename Action> double held(Action action) {
        settle();
        long turns = 0;
        (void)LoopClock::takeLongest(turns);
        const double time = untilPainted(action);
        settle();
        return std::max(time, LoopClock::takeLongest(turns).milliseconds);
    }

    void scroll() {
        QScrollBar& bar = *view_.verticalScrollBar();
        application_.paints.clear();
        for (int step = 1; step <= scrollSteps; ++step)
            untilPainted([&] {
                bar.setValue(static_cast<int>(qint64(bar.maximum()) * step / scrollSteps));
            });
        std::vector<double> paints = application_.paints;
        std::sort(paints.begin(), paints.end());
        print("paints", static_cast<double>(paints.size()));
        print("paint_p95", paints.at(paints.size() * 95 / 100));
        print("paint_max", paints.back());
    }

    void edit() {
        double slowest = 0;
        const int top = view_.rowAt(0);
        for (int i = 1; i <= edits; ++i) {
            const QModelIndex cell = view_.fileModel()->index(top + i % 5 + 1, 0);
            const int before = cell.data(Qt::CheckStateRole).toInt();
            slowest = std::max(slowest, held([&] { click(view_.visualRect(cell).center()); }));
            if (cell.data(Qt::CheckStateRole).toInt() == before)
                qFatal("the click checked nothing");
        }
        print("edit_max", slowest);
    }

    void selectAll() {
        double slowest = 0;
        for (int i = 0; i < 4; ++i)
            slowest = std::max(slowest, held([&] { view_.btnSelectAll()->click(); }));
        print("select_all_max", slowest);
    }

    /// Removes the rows for which `goes` answers true.
    template <typename Goes> double remove(Goes goes) {
        FileList& files = parts_.files;
        int staying = 0;
        for (int row = 0; row < files.rowCount(); ++row) {
            const int checked = goes(row, files.rowCount()) ? 1 : 0;
            files.setCheck(row, checked);
            files.recordAt(row)->set(key::check, checked);
            staying += 1 - checked;
        }
        const double time = held([&] { parts_.window.form().btnRemoveFile->click(); });
        if (files.rowCount() != staying || view_.fileModel()->rowCount() != staying)
            qFatal("other rows went than were checked");
        return time;
    }

private:
    void click(const QPoint& place) {
        QWidget* const viewport = view_.viewport();
        const QPointF global = viewport->mapToGlobal(QPointF(place));
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, place, global, Qt::LeftButton,
                              type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                              Qt::NoModifier);
            QCoreApplication::sendEvent(viewport, &event);
        }
    }

    TimedApplication& application_;
    ProgramParts& parts_;
    FileTableView& view_;
};

} // namespace

int main(int argc, char* argv[]) {
    TimedApplication application(argc, argv);
    if (!LoopClock::start())
        qFatal("the main loop does not stand on GLib");
    const int rows = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 10000;
    const QTemporaryDir home;
    const StringTable strings(QStringLiteral(REELSHIFT_BENCH_RESOURCES), QLocale(QLocale::English));
    const auto volumes = std::make_shared<SystemVolumeInfo>();
    DesktopFileManager fileManager;
    FakeDesktop desktop;
    UpdateSettings update;
    update.baseUrl = QStringLiteral("http://127.0.0.1:1");
    update.version = QStringLiteral("1.0.0.0");
    ProgramParts parts({QStringLiteral(REELSHIFT_BENCH_RESOURCES), update.version,
                        PersistedFolders(home.path(), home.path()),
                        home.path() + QStringLiteral("/state"), volumes, fileManager,
                        desktop.parts(), update});
    AppDelegate controller(parts);
    controller.awakeFromNib();
    controller.applicationDidFinishLaunching();
    parts.window.showMaximized();

    Bench bench(application, parts);
    bench.waitForWindow();
    const double before = residentBytes();
    bench.addRows(rows);
    bench.settle();
    print("bytes_per_row", (residentBytes() - before) / rows);
    bench.scroll();
    bench.edit();
    bench.selectAll();
    print("remove_every_second", bench.remove([](int row, int) { return row % 2 == 0; }));
    bench.addRows(rows - parts.files.rowCount());
    print("remove_in_one_piece",
          bench.remove([](int row, int count) { return row >= count / 4 && row < count * 3 / 4; }));
    bench.addRows(rows - parts.files.rowCount());
    print("remove_most", bench.remove([](int row, int) { return row % 5 != 0; }));
    (void)controller.awaitEnd();
    return 0;
}

#include "TestProgram.h"
#include "app/MainWindow.h"
#include "app/RunChecks.h"
#include "app/RunScene.h"
#include "convert/ConversionEngine.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>
#include <QTimer>

#include <malloc.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

constexpr int usualJobs = 60;
constexpr int movies = 8;
constexpr quint32 usualSeed = 20240229;
/// Steps between two looks at the log of all encoders, which grows.
constexpr int stepsPerLook = 20;
/// Of growth from the tenth of the jobs to the last one; what a test itself notes is in it.
constexpr qint64 memoryAllowance = 6 * 1024 * 1024;

/// Last bytes of an output whose encoder has finished it.
const QByteArray finished = QByteArrayLiteral("THE END");

/// A number from the environment, for a longer soak or another one.
int setting(const char* name, int usual) {
    const int given = qEnvironmentVariableIntValue(name);
    return given > 0 ? given : usual;
}

/// Bytes of this process in memory that are its own.
qint64 memoryInUse() {
    ::malloc_trim(0); // what is merely kept for later does not count
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> pages = file.readAll().split(' ');
    return (pages.value(1).toLongLong() - pages.value(2).toLongLong()) * sysconf(_SC_PAGESIZE);
}

#ifdef __SANITIZE_ADDRESS__
constexpr bool isSanitized = true; // keeps what was freed
#else
constexpr bool isSanitized = false;
#endif

/// Processes that this one has started and not reaped.
int childrenCount() {
    int count = 0;
    const QDir threads(QStringLiteral("/proc/self/task"));
    for (const QString& thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(threads.filePath(thread + QStringLiteral("/children")));
        if (file.open(QIODevice::ReadOnly))
            count += int(file.readAll().count(' ')); // one after each
    }
    return count;
}

} // namespace

/// Jobs with a user who presses whatever is there, at any moment. What is pressed comes from a
/// seed, which REELSHIFT_SOAK_SEED replaces; REELSHIFT_SOAK_JOBS makes it longer.
class TestSoak final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pressWhateverIsThere();

private:
    void act();
    void pressRow();
    void removeOne();
    void addMissing();
    void hideOrShowASource();
    void spin(int milliseconds);
    [[nodiscard]] QStringList encoderOf(int movie) const;
    [[nodiscard]] QStringList partialOutputs();
    [[nodiscard]] bool areSourcesUntouched() const;
    /// What must never be, whatever was pressed; empty where all is well.
    [[nodiscard]] QString faults();
    /// What needs a look at everything that was started so far.
    [[nodiscard]] QString faultsOfAll() const;
    [[nodiscard]] bool comeToTheEnd();
    [[nodiscard]] int pick(int below) { return int(random_.bounded(quint32(below))); }
    [[nodiscard]] QString nameOf(int movie) const { return QStringLiteral("m%1").arg(movie); }

    QRandomGenerator random_;
    std::unique_ptr<RunScene> scene_;
    QMap<QString, QByteArray> sources_;
    QMap<QString, QDateTime> whole_; ///< outputs that were looked at, as they were then
};

void TestSoak::pressWhateverIsThere() {
    const int jobs = setting("REELSHIFT_SOAK_JOBS", usualJobs);
    random_.seed(quint32(setting("REELSHIFT_SOAK_SEED", usualSeed)));
    scene_ = std::make_unique<RunScene>(5ms);
    RunScene& scene = *scene_;
    scene.program.engine().setPatience({2s, 200ms});
    for (int movie = 0; movie < movies; ++movie) {
        scene.addScript(nameOf(movie), encoderOf(movie));
        sources_[nameOf(movie)] = contentOf(scene.source(nameOf(movie)));
    }
    QTimer answers;
    connect(&answers, &QTimer::timeout, this, [&] {
        if (scene.program.boxes.allKept() && QApplication::activeModalWidget())
            scene.program.boxes.promise(1000 + pick(4), pick(4) == 0);
    });
    answers.start(3);

    qint64 memory = 0;
    int started = 0;
    for (int step = 0; started < jobs; ++step) {
        act();
        QString found = faults();
        if (found.isEmpty() && step % stepsPerLook == 0) {
            found = faultsOfAll();
            scene.program.boxes.seen.clear();
            started = int(scene.program.encodes().size());
            if (!memory && started >= jobs / 10)
                memory = memoryInUse();
        }
        QVERIFY2(found.isEmpty(), qPrintable(QStringLiteral("%1: %2").arg(step).arg(found)));
    }
    QVERIFY(comeToTheEnd());
    const qint64 grown = memoryInUse() - memory;
    qInfo("%d jobs, %lld KB more memory in use", started, grown / 1024);
    QCOMPARE(faults() + faultsOfAll(), QString());
    QVERIFY(areSourcesUntouched());
    QCOMPARE(childrenCount(), 0); // by number they may be somebody else's by now
    if (!isSanitized)
        QVERIFY2(grown < memoryAllowance, qPrintable(QString::number(grown)));
    scene_.reset();
}

QStringList TestSoak::encoderOf(int movie) const {
    const QString open = QStringLiteral("create");
    const QString part = QStringLiteral("write-text part");
    const QString wait = QStringLiteral("wait 4");
    const QStringList end{QStringLiteral("write-text THE END"), QStringLiteral("summary 10")};
    const QStringList talk{open,
                           part,
                           QStringLiteral("loop 8"),
                           QStringLiteral("progress 2"),
                           wait,
                           QStringLiteral("end")};
    switch (movie) {
    case 0:
        return QStringList{open} + end;
    case 1:
        return talk + end;
    case 2:
        return QStringList{QStringLiteral("on-term ignore")} + talk + end;
    case 3:
        return talk + QStringList{QStringLiteral("exit 1")};
    case 4:
        return talk + QStringList{QStringLiteral("print time=00:00:02.00 error\\r"),
                                  QStringLiteral("hang")};
    case 5:
        return QStringList{open, part, QStringLiteral("wait 40")} + end;
    case 6:
        return talk + end + QStringList{QStringLiteral("wait 10")};
    default:
        return QStringList{QStringLiteral("on-term quit")} + talk + end;
    }
}

void TestSoak::act() {
    RunScene& scene = *scene_;
    switch (pick(12)) {
    case 0:
    case 1:
    case 2:
        scene.program.click("btnConvertFile");
        break;
    case 3:
    case 4:
    case 5:
        pressRow();
        break;
    case 6:
        removeOne();
        break;
    case 7:
        if (pick(3) == 0)
            scene.program.click("btnStop");
        break;
    case 8:
    case 9:
        addMissing();
        break;
    case 10:
        hideOrShowASource();
        break;
    default:
        if (pick(20) == 0)
            scene.program.click("btnRemoveFile"); // all that are checked
    }
    spin(pick(12));
}

void TestSoak::pressRow() {
    if (const int rows = scene_->program.files().rowCount())
        scene_->program.clickRowButton(pick(rows));
}

void TestSoak::removeOne() {
    const int rows = scene_->program.files().rowCount();
    FileTableModel* const model = scene_->program.window().findChild<FileTableView*>()->fileModel();
    const int chosen = rows ? pick(rows) : 0;
    for (int row = 0; row < rows; ++row)
        model->setData(model->index(row, 0), row == chosen ? Qt::Checked : Qt::Unchecked,
                       Qt::CheckStateRole);
    scene_->program.click("btnRemoveFile");
}

void TestSoak::addMissing() {
    RunScene& scene = *scene_;
    if (scene.program.state().isConversionRunning)
        return;
    const QStringList there = scene.names();
    QStringList missing;
    for (int movie = 0; movie < movies; ++movie) {
        if (!there.contains(nameOf(movie)) && QFile::exists(scene.source(nameOf(movie))))
            missing << scene.source(nameOf(movie));
    }
    if (!missing.isEmpty())
        scene.program.add(missing);
}

void TestSoak::hideOrShowASource() {
    const QString source = scene_->source(nameOf(pick(movies)));
    const QString hidden = source + QStringLiteral(".hidden");
    if (QFile::exists(hidden))
        QFile::rename(hidden, source);
    else if (pick(4) == 0)
        QFile::rename(source, hidden);
}

void TestSoak::spin(int milliseconds) {
    QElapsedTimer passed;
    passed.start();
    do
        QCoreApplication::processEvents(QEventLoop::AllEvents, 2);
    while (passed.elapsed() < milliseconds);
}

QStringList TestSoak::partialOutputs() {
    QStringList partial;
    const QDir folder(scene_->program.documents(), QStringLiteral("*.mp4"));
    for (const QFileInfo& output : folder.entryInfoList(QDir::Files)) {
        const QDateTime changed = output.lastModified();
        if (whole_.value(output.fileName()) == changed)
            continue;
        if (contentOf(output.filePath()).endsWith(finished))
            whole_[output.fileName()] = changed;
        else
            partial << output.fileName();
    }
    return partial;
}

bool TestSoak::areSourcesUntouched() const {
    for (int movie = 0; movie < movies; ++movie) {
        const QString source = scene_->source(nameOf(movie));
        const QString there = QFile::exists(source) ? source : source + QStringLiteral(".hidden");
        if (contentOf(there) != sources_.value(nameOf(movie)))
            return false;
    }
    return true;
}

QString TestSoak::faults() {
    const LiveJobs& jobs = scene_->program.engine().jobs();
    QStringList faults;
    if (!scene_->isInStep())
        faults << QStringLiteral("the lists are out of step");
    if (jobs.all().size() > 1)
        faults << QStringLiteral("%1 jobs at a time").arg(jobs.all().size());
    // One may be about to be noted.
    if (childrenCount() > int(jobs.all().size() + jobs.strays().size()) + 1)
        faults << QStringLiteral("%1 processes").arg(childrenCount());
    if (scene_->program.files().pausedList.size() > 1)
        faults << QStringLiteral("two paused encoders");
    if (scene_->program.isIdle() && !partialOutputs().isEmpty())
        faults << partialOutputs();
    return faults.join(QStringLiteral(", "));
}

QString TestSoak::faultsOfAll() const {
    QStringList faults;
    if (!scene_->ranAlone())
        faults << QStringLiteral("two encoders at a time");
    if (!areSourcesUntouched())
        faults << QStringLiteral("a source was changed");
    return faults.join(QStringLiteral(", "));
}

// From now on the user only resumes what is paused, and answers.
bool TestSoak::comeToTheEnd() {
    return eventually([&] {
        const FileList& files = scene_->program.files();
        for (int row = 0; row < files.rowCount(); ++row) {
            if (scene_->program.status(row) == status::STATPS) {
                scene_->program.clickRowButton(row);
                break;
            }
        }
        return scene_->program.isIdle();
    });
}

REELSHIFT_TEST(tst_soak, TestSoak, QApplication)
#include "tst_soak.moc"

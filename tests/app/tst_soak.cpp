#include "app/RunScene.h"
#include "filelist/FileTableView.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>
#include <QTimer>

using namespace std::chrono_literals;

namespace {

constexpr int jobs = 60;
constexpr int movies = 8;
constexpr quint32 usualSeed = 20240229;

/// Last bytes of an output whose encoder has finished it.
const QByteArray finished = QByteArrayLiteral("THE END");

} // namespace

/// Some sixty jobs with a user who presses whatever is there, at any moment. What is pressed comes
/// from a seed, which REELSHIFT_SOAK_SEED replaces.
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
    [[nodiscard]] QStringList partialOutputs() const;
    /// What must never be, whatever was pressed; empty where all is well.
    [[nodiscard]] QString faults() const;
    [[nodiscard]] bool comeToTheEnd();
    [[nodiscard]] int pick(int below) { return int(random_.bounded(quint32(below))); }
    [[nodiscard]] QString nameOf(int movie) const { return QStringLiteral("m%1").arg(movie); }

    QRandomGenerator random_;
    std::unique_ptr<RunScene> scene_;
};

void TestSoak::pressWhateverIsThere() {
    const int given = qEnvironmentVariableIntValue("REELSHIFT_SOAK_SEED");
    random_.seed(given ? quint32(given) : usualSeed);
    scene_ = std::make_unique<RunScene>(5ms);
    RunScene& scene = *scene_;
    scene.program.app().engine().setPatience({2s, 200ms});
    for (int movie = 0; movie < movies; ++movie)
        scene.addScript(nameOf(movie), encoderOf(movie));
    QTimer answers;
    connect(&answers, &QTimer::timeout, this, [&] {
        if (scene.program.boxes.allKept() && QApplication::activeModalWidget())
            scene.program.boxes.promise(1000 + pick(4), pick(4) == 0);
    });
    answers.start(3);

    for (int step = 0; scene.program.encodes().size() < jobs; ++step) {
        act();
        const QString found = faults();
        QVERIFY2(found.isEmpty(), qPrintable(QStringLiteral("%1: %2").arg(step).arg(found)));
    }
    QVERIFY(comeToTheEnd());
    QCOMPARE(faults(), QString());
    for (const EncoderStart& each : scene.program.encodes())
        QCOMPARE(processState(each.pid), '\0');
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
    FileTableModel* const model =
        scene_->program.app().window().findChild<FileTableView*>()->fileModel();
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

QStringList TestSoak::partialOutputs() const {
    QStringList partial;
    const QDir folder(scene_->program.documents(), QStringLiteral("*.mp4"));
    for (const QString& name : folder.entryList(QDir::Files)) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly) && !file.readAll().endsWith(finished))
            partial << name;
    }
    return partial;
}

QString TestSoak::faults() const {
    const auto& context = scene_->program.app().engine().context();
    const auto alive = std::count_if(
        context.liveRuns.begin(), context.liveRuns.end(), [](const EncoderRunPtr& run) {
            return run->kind == EncoderRun::Kind::Job && !run->life.isSettled();
        });
    QStringList faults;
    if (!scene_->isInStep())
        faults << QStringLiteral("the lists are out of step");
    if (alive > 1)
        faults << QStringLiteral("%1 runs at a time").arg(alive);
    if (!scene_->ranAlone())
        faults << QStringLiteral("two encoders at a time");
    if (scene_->program.files().pausedList.size() > 1)
        faults << QStringLiteral("two paused encoders");
    if (scene_->program.isIdle() && !partialOutputs().isEmpty())
        faults << partialOutputs();
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

QTEST_MAIN(TestSoak)
#include "tst_soak.moc"

#include "app/RunScene.h"

#include "convert/ConversionEngine.h"
#include "filelist/ProgressObject.h"
#include "platform/ChildProcess.h"

#include <QFile>
#include <QTest>

using namespace std::chrono_literals;

RunScene::RunScene(std::chrono::milliseconds second) : program(second) {
    program.engine().setPatience({10 * second, 5 * second});
}

JobPtr RunScene::run() {
    return program.engine().jobs().current();
}

void RunScene::add(const QStringList& names) {
    QStringList paths;
    for (const QString& name : names) {
        QStringList steps{QStringLiteral("create"), QStringLiteral("header")};
        for (int step = 1; step <= lastStep; ++step)
            steps << QStringLiteral("progress %1").arg(step)
                  << QStringLiteral("wait-file %1.%2").arg(name).arg(step);
        write(name, steps << QStringLiteral("write 4096") << QStringLiteral("summary 10"));
        paths << source(name);
    }
    program.add(paths);
}

void RunScene::addScript(const QString& name, const QStringList& encode) {
    write(name, encode);
    program.add({source(name)});
}

void RunScene::write(const QString& name, const QStringList& encode) {
    program.movie(name + QStringLiteral(".mp4"))
        .encode(QStringList(QStringLiteral("alone alone")) + encode)
        .write();
}

QString RunScene::source(const QString& name) const {
    return program.movies() + u'/' + name + QStringLiteral(".mp4");
}

QString RunScene::output(const QString& name) const {
    return program.output(name + QStringLiteral("_HQ_640x480.mp4"));
}

bool RunScene::hasOutput(const QString& name) const {
    return QFile::exists(output(name));
}

QStringList RunScene::names() {
    QStringList result;
    for (const JobRecordPtr& record : program.files().fileInfoArr)
        result << record->text(key::name).chopped(4);
    return result;
}

bool RunScene::isInStep() {
    const FileList& files = program.files();
    const auto rows = static_cast<size_t>(files.rowCount());
    return files.check.size() == rows && static_cast<size_t>(files.cmb.size()) == rows &&
           files.idList.size() == rows && files.progressObjects.size() == rows &&
           static_cast<size_t>(files.resolutionListForTable.size()) == rows &&
           files.arrayControllerNew == files.fileInfoArr;
}

bool RunScene::begin() {
    program.click("btnConvertFile");
    const JobPtr first = run();
    return eventually([&] { return first && first->row.record->contains(key::progressValue); });
}

bool RunScene::waitForPercent(int row, int percent) {
    const JobRecordPtr record = program.files().recordAt(row);
    const QString wanted = QStringLiteral("%1 %").arg(percent);
    return eventually([&] { return record->text(key::progressValue) == wanted; });
}

void RunScene::go(const QString& name, int step) {
    QFile file(program.movies() + QStringLiteral("/%1.%2").arg(name).arg(step));
    QVERIFY(file.open(QIODevice::WriteOnly));
}

void RunScene::goToEnd(const QString& name) {
    for (int step = 1; step <= lastStep; ++step)
        go(name, step);
}

bool RunScene::pause(int row, const QString& name, int step) {
    program.clickRowButton(row);
    go(name, step);
    const JobRecordPtr record = program.files().recordAt(row);
    return eventually([&] { return record->text(key::status) == status::STATPS; });
}

bool RunScene::end(const QStringList& names) {
    for (const QString& name : names)
        goToEnd(name);
    program.boxes.promise(1000);
    return program.waitUntilIdle() && program.boxes.allKept();
}

bool RunScene::blockUntilEnded() {
    return run()->task()->waitForEnd(20s).has_value();
}

qint64 RunScene::encoderPid() const {
    const QList<EncoderStart> encodes = program.encodes();
    return encodes.isEmpty() ? 0 : encodes.last().pid;
}

char RunScene::encoderState() const {
    return processState(encoderPid());
}

bool RunScene::ranAlone() const {
    QFile file(program.movies() + QStringLiteral("/alone"));
    // Where none has come to look yet there is no file.
    return !file.exists() || (file.open(QIODevice::ReadOnly) && file.readAll().isEmpty());
}

bool eventually(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 20000);
}

char processState(qint64 pid) {
    QFile file(QStringLiteral("/proc/%1/stat").arg(pid));
    if (pid <= 0 || !file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray facts = file.readAll();
    const qsizetype name = facts.lastIndexOf(')');
    return name >= 0 && name + 2 < facts.size() ? facts.at(name + 2) : 0;
}

QString text(const char* id) {
    return getLocalString(id);
}

QString lines(std::initializer_list<QString> texts) {
    return QStringList(texts).join(u'\n');
}

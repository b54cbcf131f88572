#include "faults/FaultScene.h"

#include "app/RunChecks.h"
#include "convert/ConversionEngine.h"
#include "faults/FaultTable.h"
#include "platform/ChildProcess.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"
#include "widgets/MessageBox.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>

namespace {

constexpr int longestRun = 60000; // milliseconds

// Keys of the boxes that a fault can bring.
constexpr const char* boxMessages[] = {
    "IDS_TXT_POPUP_OPERATION_SUCCESSFUL",
    "IDS_TXT_POPUP_ERROR",
    "IDS_TXT_POPUP_MEMORYFULL",
    "IDS_TXT_POPUP_SOURCE_UNAVAILABLE",
    "IDS_TXT_POPUP_UNEXPECTEDREMOVE",
    "IDS_BTN_POPUP_OUTFLDRUNAVAILABLE",
    "IDS_TXT_POPUP_SAMENAME",
    "IDS_TXT_POPUP_STOPCONVERTING",
    "IDS_TXT_UNSUPPORTED",
    "IDS_TXT_ENCODER_MISSING",
};

QString keyOf(const QString& message) {
    for (const char* key : boxMessages) {
        if (message.startsWith(getLocalString(key)))
            return QString::fromLatin1(key);
    }
    return message;
}

/// Names that begin with a dot too.
QStringList allNamesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

QString inShort(const QString& name) {
    return name.size() > 24 ? name.left(20) + QStringLiteral("...") : name;
}

QString list(const QStringList& names) {
    return names.isEmpty() ? QStringLiteral("nothing") : names.join(QStringLiteral(", "));
}

} // namespace

FaultScene::FaultScene(const Fault& fault)
    : program(fault.second), fault_(fault), outputFolder_(program.documents()) {
    setPatience();
}

void FaultScene::restart() {
    program.restart();
    outputFolder_ = program.widget<QLineEdit>("outputFolderPath")->text();
    setPatience();
}

void FaultScene::setPatience() {
    program.engine().setPatience({20 * fault_.second, 10 * fault_.second});
}

void FaultScene::addScripted(const QString& name, const QStringList& encode) {
    program.add({program.movie(name).encode(encode).write()});
}

bool FaultScene::addGood(const QString& name) {
    if (!isRealEncoder())
        program.movie(name).write();
    else if (!makeReal(name))
        return false;
    add(name);
    return true;
}

void FaultScene::setOutputFolder(const QString& folder) {
    outputFolder_ = folder;
    program.widget<QLineEdit>("outputFolderPath")->setText(folder);
}

const RealMovies& FaultScene::movies() {
    static const RealMovies movies;
    return movies;
}

bool FaultScene::makeReal(const QString& name, const RealMovies::Wish& wish) const {
    static const QTemporaryDir models;
    const size_t number = qHash(QStringList{wish.source, wish.audio} + wish.more);
    const QString model = models.filePath(QString::number(number) + QStringLiteral(".mp4"));
    const bool made = QFile::exists(model) || movies().make(model, wish);
    return made && QFile::copy(model, source(name));
}

bool FaultScene::makeLong(const QString& name) const {
    const QString once = name + QStringLiteral(".once.mp4");
    return makeReal(once) && movies().repeat(source(once), 30, source(name)) &&
           QFile::remove(source(once));
}

QString FaultScene::useEncoder() {
    if (!isRealEncoder())
        return {};
    if (!movies().missing().isEmpty())
        return movies().missing();
    return program.useRealEncoder() ? QString() : QStringLiteral("ffmpeg cannot be linked");
}

void FaultScene::run() {
    before_ = contentsOf(program.movies());
    const auto outputs = contentsOf(outputFolder_);
    for (auto it = outputs.begin(); it != outputs.end(); ++it)
        before_.insert(it.key(), it.value());
    for (const BoxAnswer& box : fault_.boxes) {
        program.boxes.promise(box.code, false, [this, &box] {
            lookForMarkup();
            if (box.meanwhile)
                box.meanwhile(*this);
        });
    }
    program.boxes.answerTheRest(1000);
    lookForMarkup();
    program.click("btnConvertFile");
    if (fault_.meanwhile)
        fault_.meanwhile(*this);
    cameToAnEnd_ = QTest::qWaitFor([this] { return program.isIdle(); }, longestRun);
}

bool FaultScene::waitForProgress() {
    const JobPtr run = program.engine().jobs().current();
    return run &&
           QTest::qWaitFor([&] { return run->row.record->contains(key::progressValue); }, 20000);
}

qint64 FaultScene::encoderPid() {
    return program.engine().jobs().current()->task()->processIdentifier();
}

bool FaultScene::pause() {
    if (!waitForProgress())
        return false;
    program.clickRowButton(0);
    return QTest::qWaitFor([this] { return program.status(0) == status::STATPS; }, 20000);
}

QString FaultScene::complaints() {
    QStringList found;
    if (!cameToAnEnd_)
        found += QStringLiteral("the run did not come to its end");
    QStringList keys;
    for (const BoxAnswer& box : fault_.boxes)
        keys += QString::fromLatin1(box.key);
    if (boxKeys() != keys)
        found += QStringLiteral("the boxes were ") + list(boxKeys());
    if (!markup_.isEmpty())
        found += QStringLiteral("taken for markup: ") + list(markup_);
    if (!runControlsAre(true, program))
        found += QStringLiteral("the controls are locked");
    QStringList rows;
    for (int row = 0; row < program.files().rowCount(); ++row) {
        rows += program.files().recordAt(row)->text(key::name);
        if (!isWaiting(row, program))
            found += rows.last() + QStringLiteral(" is not waiting");
    }
    if (rows != fault_.waiting)
        found += QStringLiteral("the rows are ") + list(rows);
    if (newOutputs() != fault_.outputs)
        found += QStringLiteral("the outputs are ") + list(newOutputs());
    if (!changedFiles().isEmpty())
        found += QStringLiteral("not as before: ") + list(changedFiles());
    if (!program.files().conversionTaskList.empty() || !program.files().pausedList.empty())
        found += QStringLiteral("the queue is not empty");
    if (!QTest::qWaitFor([this] { return processesOf(program.path(QString())).isEmpty(); }, 10000))
        found += QStringLiteral("a process is left");
    return found.join(QStringLiteral("; "));
}

QString FaultScene::outcome() {
    QStringList parts;
    for (int row = 0; row < program.files().rowCount(); ++row)
        parts += inShort(program.files().recordAt(row)->text(key::name)) + u' ' +
                 program.status(row).toLower();
    for (const QString& name : newOutputs())
        parts += inShort(name.section(u'_', 0, 0)) + QStringLiteral(" converted");
    return parts.isEmpty() ? QStringLiteral("no row, no output") : parts.join(QStringLiteral(", "));
}

QMap<QString, QByteArray> FaultScene::contentsOf(const QString& folder) {
    QMap<QString, QByteArray> result;
    for (const QString& name : allNamesIn(folder))
        result.insert(folder + u'/' + name, contentOf(folder + u'/' + name));
    return result;
}

QStringList FaultScene::boxKeys() const {
    QStringList keys;
    for (const BoxAnswers::Box& box : program.boxes.seen)
        keys += keyOf(box.message);
    return keys;
}

void FaultScene::lookForMarkup() {
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        for (const auto* label : window->findChildren<QLabel*>()) {
            const Qt::TextFormat format = label->textFormat();
            if (format != Qt::PlainText &&
                (format != Qt::AutoText || Qt::mightBeRichText(label->text())))
                markup_ += label->text();
        }
    }
    const QAbstractItemModel& table = *program.widget<FileTableView>("theTableNew")->fileModel();
    for (int row = 0; row < table.rowCount(); ++row) {
        for (int column = 0; column < table.columnCount(); ++column) {
            const QString tip = table.index(row, column).data(Qt::ToolTipRole).toString();
            // One that is taken for markup says what the name is all the same.
            if (Qt::mightBeRichText(tip) && tip.count(u'<') > 2)
                markup_ += tip;
        }
    }
}

QStringList FaultScene::newOutputs() const {
    QStringList names;
    for (const QString& name : allNamesIn(outputFolder_)) {
        if (!before_.contains(output(name)) && !changing_.contains(output(name)))
            names += name;
    }
    return names;
}

QStringList FaultScene::changedFiles() const {
    QStringList names;
    for (auto it = before_.begin(); it != before_.end(); ++it) {
        if (!changing_.contains(it.key()) && contentOf(it.key()) != it.value())
            names += QFileInfo(it.key()).fileName();
    }
    return names;
}

QList<qint64> processesOf(const QString& folder) {
    QList<qint64> found;
    const QByteArray mark = QFile::encodeName(folder);
    for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        bool isNumber = false;
        const qint64 pid = name.toLongLong(&isNumber);
        if (isNumber && contentOf(QStringLiteral("/proc/%1/cmdline").arg(pid)).contains(mark))
            found += pid;
    }
    return found;
}

FaultRow survive(const Fault& fault) {
    FaultScene scene(fault);
    FaultRow row{fault.name,
                 scene.isRealEncoder() ? QStringLiteral("real") : QStringLiteral("scripted"),
                 fault.answer,
                 {},
                 {}};
    QString problem = scene.useEncoder();
    if (problem.isEmpty())
        problem = fault.prepare(scene);
    if (!problem.isEmpty()) {
        row.verdict = QStringLiteral("skipped: ") + problem;
        return row;
    }
    scene.run();
    row.verdict = scene.complaints();
    row.outcome = scene.outcome();
    if (row.verdict.isEmpty() && fault.afterwards)
        row.verdict = fault.afterwards(scene);
    if (row.verdict.isEmpty())
        row.verdict = QStringLiteral("survived");
    return row;
}

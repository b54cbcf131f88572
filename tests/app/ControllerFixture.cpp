#include "app/ControllerFixture.h"

#include "app/AppDelegate.h"
#include "app/ProgramParts.h"
#include "platform/LocalizedStrings.h"
#include "widgets/MessageBox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <filesystem>

BoxAnswers::BoxAnswers() {
    connect(&timer_, &QTimer::timeout, this, &BoxAnswers::look);
    timer_.start(2);
}

void BoxAnswers::promise(int code, bool tick, std::function<void()> before) {
    promises_.append({code, tick, std::move(before)});
}

QStringList BoxAnswers::messages() const {
    QStringList result;
    for (const Box& box : seen)
        result += box.message;
    return result;
}

void BoxAnswers::look() {
    auto* const box = qobject_cast<MessageBox*>(QApplication::activeModalWidget());
    if (!box || !box->isVisible()) {
        last_ = nullptr;
        return;
    }
    auto* const tick = box->findChild<QCheckBox*>(QStringLiteral("popUpCheckBox"));
    if (box != last_) {
        last_ = box;
        Box noted{box->accessibleName(), {}, tick ? tick->text() : QString()};
        for (int code = 1000;; ++code) {
            const auto* const button =
                box->findChild<QPushButton*>(QStringLiteral("popUpButton%1").arg(code));
            if (!button)
                break;
            noted.buttons += button->text();
        }
        seen += noted;
    }
    if (promises_.isEmpty() && restCode_ == 0)
        return;
    answeredUnasked_ += promises_.isEmpty() ? 1 : 0;
    const Promise promise =
        promises_.isEmpty() ? Promise{restCode_, false, {}} : promises_.takeFirst();
    if (promise.before)
        promise.before();
    if (tick)
        tick->setChecked(promise.tick);
    last_ = nullptr;
    if (auto* const button =
            box->findChild<QPushButton*>(QStringLiteral("popUpButton%1").arg(promise.code)))
        button->click();
}

ControllerFixture::ControllerFixture(std::chrono::milliseconds second, const QLocale& locale)
    : second_(second) {
    for (const QString& folder : {documents(), movies(), resources()})
        QDir().mkpath(folder);
    encoderLog_ = installFakeEncoder(resources());
    strings_ = std::make_unique<StringTable>(QStringLiteral(REELSHIFT_TEST_RESOURCES), locale);
    QApplication::setLayoutDirection(strings_->direction());
    start();
}

void ControllerFixture::start() {
    UpdateSettings update;
    // Nothing listens there: the check finds no server at once.
    update.baseUrl = QStringLiteral("http://127.0.0.1:1");
    update.version = QStringLiteral("1.0.0.0");
    parts_ = std::make_unique<ProgramParts>(
        Surroundings{resources(), update.version,
                     ofTheUser ? PersistedFolders()
                               : PersistedFolders(documents(), path(QStringLiteral("home"))),
                     stateFolder(), sharedVolumes, fileManager, desktop.parts(), update, second_});
    controller_ = std::make_unique<AppDelegate>(*parts_);
    controller_->awakeFromNib();
    controller_->applicationDidFinishLaunching();
    parts_->window.show();
}

ControllerFixture::~ControllerFixture() {
    quit();
    qputenv("PATH", searchPath_);
    // Not left to the toolkit, which does not find names that are no text again.
    std::error_code ignored;
    std::filesystem::remove_all(QFile::encodeName(folder_.path()).toStdString(), ignored);
}

MainWindow& ControllerFixture::window() {
    return parts_->window;
}

ConversionEngine& ControllerFixture::engine() {
    return parts_->engine;
}

MainThread& ControllerFixture::mainThread() {
    return parts_->mainThread;
}

ChildProcesses& ControllerFixture::processes() {
    return parts_->processes;
}

ActionGate& ControllerFixture::gate() {
    return parts_->gate;
}

ProbeRunner& ControllerFixture::probeRunner() {
    return parts_->probeRunner;
}

RowDrag& ControllerFixture::rowDrag() {
    return parts_->rowDrag;
}

UpdateCheck& ControllerFixture::update() {
    return parts_->update;
}

FileList& ControllerFixture::files() {
    return parts_->files;
}

SharedState& ControllerFixture::state() {
    return parts_->state;
}

QWidget& ControllerFixture::top() {
    return parts_->window;
}

QString ControllerFixture::shownOutputFolder() {
    return parts_->window.outputFolderText();
}

ScriptedMovie ControllerFixture::movie(const QString& name) const {
    return ScriptedMovie(movies(), name);
}

QList<EncoderStart> ControllerFixture::encodes() const {
    QList<EncoderStart> result = starts();
    result.removeIf([](const EncoderStart& each) { return each.arguments.size() < 3; });
    return result;
}

bool ControllerFixture::isIdle() const {
    const auto& run = parts_->engine.jobs().current();
    return !parts_->state.isConversionRunning && (!run || run->life().isSettled()) &&
           !QApplication::activeModalWidget() && !parts_->mainThread.isWaiting();
}

void ControllerFixture::add(const QStringList& paths) {
    parts_->gate.pass([this, paths] { controller_->addPicked(paths); });
}

void ControllerFixture::drop(const QStringList& paths) {
    parts_->gate.pass([this, paths] { parts_->addFiles.addDropped(paths); });
}

void ControllerFixture::click(const char* name) {
    parts_->window.findChild<QAbstractButton*>(QString::fromLatin1(name))->click();
}

void ControllerFixture::clickRowButton(int row) {
    parts_->gate.pass([this, row] { controller_->rowButton(row); });
}

bool ControllerFixture::runToEnd() {
    click("btnConvertFile");
    return waitUntilIdle();
}

bool ControllerFixture::waitUntilIdle() {
    return QTest::qWaitFor([this] { return isIdle(); }, 20000);
}

void ControllerFixture::quit() {
    if (!controller_)
        return;
    controller_->applicationShouldTerminateAfterLastWindowClosed();
    const bool ended = controller_->awaitEnd();
    Q_ASSERT(ended);
    Q_UNUSED(ended);
    controller_.reset();
    parts_.reset();
}

void ControllerFixture::restart() {
    quit();
    start();
}

bool ControllerFixture::useRealEncoder() {
    const QString link = resources() + QStringLiteral("/ffmpeg");
    return !QStandardPaths::findExecutable(QStringLiteral("ffmpeg")).isEmpty() &&
           QFile::remove(link) && QFile::link(launcher(), link);
}

QString ControllerFixture::launcher() {
    return QStringLiteral(REELSHIFT_LAUNCHER);
}

void ControllerFixture::useLauncher(const QString& release) {
    const QString link = resources() + QStringLiteral("/ffmpeg");
    QVERIFY(QFile::remove(link));
    QVERIFY(QFile::link(launcher(), link));
    const QString system = path(QStringLiteral("system"));
    if (release.isEmpty()) {
        QVERIFY(QDir(system).removeRecursively());
    } else {
        encoderLog_ = installFakeEncoder(system);
        QVERIFY(!encoderLog_.isEmpty());
        QVERIFY(setEncoderRelease(system, release));
    }
    qputenv("PATH", QFile::encodeName(system));
}

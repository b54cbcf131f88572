#pragma once

#include "app/FakeDesktop.h"
#include "encoder/ScriptedMovie.h"
#include "filelist/FileList.h"
#include "platform/LocalizedStrings.h"
#include "platform/desktop/FakeVolumes.h"
#include "platform/desktop/FileManager.h"

#include <QLocale>
#include <QStringList>
#include <QTemporaryDir>
#include <QTimer>

#include <memory>

class ActionGate;
class AppDelegate;
class ChildProcesses;
class ConversionEngine;
class MainThread;
class MainWindow;
class ProbeRunner;
class RowDrag;
class StringTable;
class UpdateCheck;
struct ProgramParts;

/// Notes the folders that the program shows.
class FakeFileManager final : public FileManager {
public:
    QStringList shown;

    void showFolder(const QString& path) override { shown += path; }
};

/// Answers message boxes as they open: each with the button that was promised for it, in the
/// order of the promises, and notes what they said. A box that nobody promised an answer for
/// stays open unless it is told to answer everything.
class BoxAnswers final : public QObject {
    Q_OBJECT

public:
    struct Box {
        QString message;
        QStringList buttons;
        QString checkBox;
    };

    BoxAnswers();

    /// Every box that was open, as it was.
    QList<Box> seen;

    /// The next box is answered with this code; `tick` its check box first. `before` runs while
    /// the box is open.
    void promise(int code, bool tick = false, std::function<void()> before = {});
    /// Every box that nobody promised an answer for is answered with this code, and counted.
    void answerTheRest(int code) { restCode_ = code; }
    [[nodiscard]] int answeredUnasked() const { return answeredUnasked_; }
    [[nodiscard]] bool allKept() const { return promises_.isEmpty(); }
    [[nodiscard]] QStringList messages() const;

private:
    struct Promise {
        int code;
        bool tick;
        std::function<void()> before;
    };

    void look();

    QList<Promise> promises_;
    int restCode_ = 0;
    int answeredUnasked_ = 0;
    QWidget* last_ = nullptr;
    QTimer timer_;
};

/// The whole program without its main(): a real controller with its window, in folders of its own,
/// with the fake encoder and a second of 50 ms.
class ControllerFixture final {
public:
    explicit ControllerFixture(std::chrono::milliseconds second = std::chrono::milliseconds(50),
                               const QLocale& locale = QLocale(QLocale::English));
    ~ControllerFixture();
    Q_DISABLE_COPY_MOVE(ControllerFixture)

    [[nodiscard]] QString path(const QString& name) const { return folder_.filePath(name); }
    [[nodiscard]] QString documents() const { return path(QStringLiteral("home/Documents")); }
    [[nodiscard]] QString movies() const { return path(QStringLiteral("movies")); }
    [[nodiscard]] QString resources() const { return path(QStringLiteral("resources")); }
    /// Where the notes of its runs are.
    [[nodiscard]] QString stateFolder() const { return path(QStringLiteral("state/reelshift")); }
    [[nodiscard]] QString output(const QString& name) const { return documents() + u'/' + name; }
    /// A movie for the fake encoder, not written yet.
    [[nodiscard]] ScriptedMovie movie(const QString& name) const;
    [[nodiscard]] QList<EncoderStart> starts() const { return readEncoderStarts(encoderLog_); }
    /// Starts with an output, the probes and the launches without arguments left out.
    [[nodiscard]] QList<EncoderStart> encodes() const;

    AppDelegate& app() { return *controller_; }
    // Its parts; the header of each is the test's to include.
    MainWindow& window();
    FileList& files();
    SharedState& state();
    ConversionEngine& engine();
    MainThread& mainThread();
    ChildProcesses& processes();
    ActionGate& gate();
    ProbeRunner& probeRunner();
    RowDrag& rowDrag();
    UpdateCheck& update();
    /// A widget of the main window by its object name.
    template <typename T> T* widget(const char* name) {
        return top().findChild<T*>(QString::fromLatin1(name));
    }
    [[nodiscard]] QString status(int row) { return files().recordAt(row)->text(key::status); }
    [[nodiscard]] QString progressText(int row) {
        return files().recordAt(row)->text(key::progress);
    }
    [[nodiscard]] QString shownOutputFolder();
    [[nodiscard]] bool isIdle() const;

    /// Adds movies as a confirmed panel does.
    void add(const QStringList& paths);
    void drop(const QStringList& paths);
    /// Clicks a button by its object name.
    void click(const char* name);
    /// Clicks the row's image button, as the table does.
    void clickRowButton(int row);
    /// Convert, and wait until the run is over; false after 20 s.
    [[nodiscard]] bool runToEnd();
    [[nodiscard]] bool waitUntilIdle();
    /// Ends the controller as main() does.
    void quit();
    /// Ends it and starts another one in the same folders.
    void restart();
    /// Puts the launcher in the fake encoder's place, which becomes the installed ffmpeg; false
    /// where there is none.
    [[nodiscard]] bool useRealEncoder();
    /// Path of the launcher itself.
    [[nodiscard]] static QString launcher();
    /// Puts the launcher in the fake encoder's place, and the fake encoder, as that release of
    /// ffmpeg, into a folder of the system; none at all where `release` is empty.
    void useLauncher(const QString& release);

    /// The next start looks for the folders where the environment says, as main() does.
    bool ofTheUser = false;
    BoxAnswers boxes;
    const std::shared_ptr<FakeVolumes> sharedVolumes = std::make_shared<FakeVolumes>();
    FakeVolumes& volumes = *sharedVolumes;
    FakeFileManager fileManager;
    FakeDesktop desktop;

private:
    void start();
    [[nodiscard]] QWidget& top();

    const std::chrono::milliseconds second_;
    QTemporaryDir folder_;
    QString encoderLog_;
    const QByteArray searchPath_ = qgetenv("PATH");
    std::unique_ptr<StringTable> strings_;
    std::unique_ptr<ProgramParts> parts_;
    std::unique_ptr<AppDelegate> controller_;
};

#include "TestProgram.h"
#include "app/MainWindow.h"
#include "app/RunChecks.h"
#include "convert/ConversionEngine.h"
#include "filelist/ProgressObject.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>

/// Whole runs with the fake encoder: from the list to the summary.
class TestRun final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void twoMovies();
    void uncheckedRowsAreConverted();
    void withoutAnOutputFolderNothingIsQueued();
    void nothingWaitingShowsNoSummary();
    void nothingWaitingShowsTheSummaryOfWhatWasQueuedBefore();
    void aQueuedIdWithoutARowIsDropped();
    void theRunEndsWhenNoQueuedIdHasARow();
    void withoutADurationAJobIsDroppedSilently();
    void aRowAsItGoes();
    void theFirstJobEndsBeforeTheSecondBegins();
    void theSummaryTakesConvertedRowsOut();
    void theLastRowOutDisablesRemove();
    void okLeavesTheOpenFolderCheckAlone();
    void openFolderUnticksAndShowsTheFolder();
    void aSummaryOfNothingChangesNothing();
    void changeConvertingIndex();
    void aSecondRunConvertsWhatCameLater();
    void reorderedRowsAreAllConverted();
    void aRowRemovedWhileAJobBeginsDoesNotChangeItsMovie();

private:
    static QString sizeColumn(ControllerFixture& program);
};

void TestRun::twoMovies() {
    ControllerFixture program;
    const QString first = program.movie(QStringLiteral("a.mp4")).write();
    const QString second = program.movie(QStringLiteral("b.c.mp4")).write();
    program.add({first, second});
    QCOMPARE(program.files().rowCount(), 2);
    QCOMPARE(program.status(0), status::STATWT);

    bool unlockedUnderTheBox = false;
    program.boxes.promise(okAnswer, false,
                          [&] { unlockedUnderTheBox = runControlsAre(true, program); });
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.allKept());
    QCOMPARE(program.boxes.messages(), textsOf({"IDS_TXT_POPUP_OPERATION_SUCCESSFUL"}));
    QCOMPARE(program.boxes.seen[0].buttons, textsOf({"IDS_BTN_POPUP_OK", "IDS_BTN_OPEN_FOLDER"}));
    QVERIFY(program.boxes.seen[0].checkBox.isEmpty());
    // A normal end unlocks the controls first and shows the summary then.
    QVERIFY(unlockedUnderTheBox);
    QVERIFY(QFile::exists(program.output(QStringLiteral("a_HQ_640x480.mp4"))));
    // Only the last extension goes.
    QVERIFY(QFile::exists(program.output(QStringLiteral("b.c_HQ_640x480.mp4"))));
    QCOMPARE(program.files().rowCount(), 0);
    const QList<EncoderStart> encodes = program.encodes();
    QCOMPARE(encodes.size(), 2);
    const QString output = program.output(QStringLiteral("a_HQ_640x480.mp4"));
    QCOMPARE(encodes[0].arguments.join(u' '),
             QStringLiteral("-psnr -i %1 -codec:v libx264 -preset veryfast -level:v 5.1 -vf "
                            "scale=640:480 -crf 15 -g 15 -pix_fmt yuv420p -acodec copy "
                            "-avoid_negative_ts 1 %2")
                 .arg(first, output));
}

void TestRun::uncheckedRowsAreConverted() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4")).write()});
    program.files().setCheck(0, 0);
    program.files().recordAt(0)->set(key::check, 0);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(QFile::exists(program.output(QStringLiteral("a_HQ_640x480.mp4"))));
}

void TestRun::withoutAnOutputFolderNothingIsQueued() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4")).write()});
    program.state().checkStatusForFileConflict = true;
    program.state().checkStatusForConversionError = true;
    program.state().checkStatusForSdCardDelay = true;
    QVERIFY(QDir(program.documents()).removeRecursively());
    bool unlocked = false;
    program.boxes.promise(okAnswer, false, [&] { unlocked = runControlsAre(true, program); });
    QVERIFY(program.runToEnd());

    QCOMPARE(program.boxes.messages(), textsOf({"IDS_BTN_POPUP_OUTFLDRUNAVAILABLE"}));
    QCOMPARE(program.boxes.seen[0].buttons, textsOf({"IDS_BTN_POPUP_OK"}));
    QVERIFY(unlocked);
    QVERIFY(program.files().conversionTaskList.empty());
    QVERIFY(program.state().noOfconvertingFileList.isEmpty());
    QVERIFY(program.encodes().isEmpty());
    QVERIFY(isWaiting(0, program));
    // Only the marks of a run's own questions are cleared.
    QVERIFY(!program.state().checkStatusForFileConflict);
    QVERIFY(!program.state().checkStatusForConversionError);
    QVERIFY(program.state().checkStatusForSdCardDelay);
}

void TestRun::nothingWaitingShowsNoSummary() {
    ControllerFixture program;
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.seen.isEmpty());
    QVERIFY(runControlsAre(true, program));
    QVERIFY(!program.state().isConversionRunning);
}

void TestRun::nothingWaitingShowsTheSummaryOfWhatWasQueuedBefore() {
    ControllerFixture program;
    program.state().noOfconvertingFileList.add(7); // as a stopped run leaves it
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages(), textsOf({"IDS_TXT_POPUP_OPERATION_SUCCESSFUL"}));
    QVERIFY(program.state().noOfconvertingFileList.isEmpty());
    QVERIFY(runControlsAre(true, program));
}

void TestRun::aQueuedIdWithoutARowIsDropped() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4")).write()});
    program.files().enqueue(999);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.encodes().size(), 1);
    QCOMPARE(program.boxes.seen.size(), 1);
    QCOMPARE(program.files().rowCount(), 0);
}

void TestRun::theRunEndsWhenNoQueuedIdHasARow() {
    ControllerFixture program;
    program.state().convertingIndex = 5;
    program.files().enqueue(998);
    program.files().enqueue(999);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.state().convertingIndex, ConvertingIndex::noRow);
    QVERIFY(program.files().conversionTaskList.empty());
    QVERIFY(runControlsAre(true, program));
}

void TestRun::withoutADurationAJobIsDroppedSilently() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4")).write(),
                 program.movie(QStringLiteral("b.mp4")).write()});
    program.files().recordAt(0)->set(key::duration, QStringLiteral("None"));
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages(), textsOf({"IDS_TXT_POPUP_OPERATION_SUCCESSFUL"}));
    QCOMPARE(program.encodes().size(), 1);
    QVERIFY(program.encodes()[0].arguments.last().endsWith(QStringLiteral("b_HQ_640x480.mp4")));
    // The failed mark went to a progress record that no row shows.
    QCOMPARE(program.files().rowCount(), 1);
    QVERIFY(isWaiting(0, program));
}

void TestRun::aRowAsItGoes() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4"))
                     .encode({"wait-file begin", "create", "header", "progress 3.79",
                              "wait-file go", "write 10", "summary 10"})
                     .write()});
    const JobRecordPtr record = program.files().recordAt(0);
    const auto progress = program.files().progressObjects[0];
    const QString output = program.output(QStringLiteral("a_HQ_640x480.mp4"));
    QVERIFY(isWaiting(0, program));

    program.click("btnConvertFile");
    QTRY_COMPARE(record->text(key::status), status::STATPR);
    QVERIFY(runControlsAre(false, program));
    QVERIFY(program.state().isConversionRunning);
    QCOMPARE(program.state().convertingIndex, 0);
    QCOMPARE(record->text(key::image), rowimage::pause);
    QCOMPARE(record->text(key::path), output);
    QVERIFY(progress->statusString().isEmpty());
    QVERIFY(!progress->showsBar());

    writeContent(program.path(QStringLiteral("movies/begin")));
    QTRY_COMPARE(record->text(key::progressValue), QStringLiteral("37 %"));
    QCOMPARE(record->text(key::progress), QString());
    QCOMPARE(progress->statusString(), status::STATCR);
    QVERIFY(progress->showsBar());
    QTRY_COMPARE(progress->currentStep(), 37);
    QCOMPARE(progress->textProgress().progress(), 0.37);
    QCOMPARE(record->text(key::status), status::STATPR);

    bool shownAsConverted = false;
    program.boxes.promise(okAnswer, false, [&] {
        shownAsConverted =
            record->text(key::status) == status::STATCO &&
            record->text(key::image) == rowimage::remove &&
            record->text(key::progress) == getLocalString("IDS_TXT_STATUS_CONVERTED") &&
            record->text(key::conversionstat) == status::CONCOMPLETE &&
            progress->statusString().isEmpty() && program.files().rowCount() == 1 &&
            program.state().noOfConvertedFile == 1;
    });
    writeContent(program.path(QStringLiteral("movies/go")));
    QVERIFY(program.waitUntilIdle());
    QVERIFY(shownAsConverted);
    QCOMPARE(program.state().noOfConvertedFile, 0);
    QVERIFY(program.state().stopped); // the summary's answer sets it, the next run clears it
}

void TestRun::theFirstJobEndsBeforeTheSecondBegins() {
    ControllerFixture program;
    QStringList movies;
    for (const char* name : {"a.mp4", "b.mp4", "c.mp4"})
        movies += program.movie(QString::fromLatin1(name))
                      .encode({"alone lock", "create", "header", "progress 5", "wait-file go",
                               "write 10", "summary 10"})
                      .write();
    program.add(movies);
    program.click("btnConvertFile");
    QTRY_COMPARE(program.files().recordAt(0)->text(key::progressValue), QStringLiteral("50 %"));
    QCOMPARE(program.encodes().size(), 1);
    QVERIFY(isWaiting(1, program));
    QCOMPARE(program.files().conversionTaskList, program.files().idList);
    program.boxes.promise(okAnswer);
    writeContent(program.path(QStringLiteral("movies/go")));
    QVERIFY(program.waitUntilIdle());
    QCOMPARE(contentOf(program.path(QStringLiteral("movies/lock"))), QByteArray());
    QCOMPARE(program.boxes.seen.size(), 1);
    const QList<EncoderStart> encodes = program.encodes();
    QCOMPARE(encodes.size(), 3);
    for (int i = 0; i < 3; ++i)
        QVERIFY(encodes[i].arguments.contains(movies[i]));
}

QString TestRun::sizeColumn(ControllerFixture& program) {
    return program.files().resolutionListForTable.join(u' ');
}

void TestRun::theSummaryTakesConvertedRowsOut() {
    ControllerFixture program;
    QStringList movies;
    for (const char* size : {"640x480", "1280x720", "1920x1080", "3840x2160"})
        movies += program.movie(QString::fromLatin1(size) + QStringLiteral(".mp4"))
                      .probe(QStringLiteral("hevc"), QString::fromLatin1(size))
                      .write();
    program.add(movies);
    FileList& files = program.files();
    const QString sizes = files.resolutionListForTable[0] + u' ' + files.resolutionListForTable[2];
    const std::vector<JobRecordPtr> left{files.recordAt(0), files.recordAt(2)};
    for (const JobRecordPtr& record : left)
        record->set(key::duration, QStringLiteral("None"));
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());

    QCOMPARE(files.fileInfoArr, left);
    QCOMPARE(files.arrayControllerNew, left);
    QCOMPARE(files.idList, std::vector<int>({left[0]->id(), left[1]->id()}));
    QCOMPARE(sizeColumn(program), sizes);
    QCOMPARE(files.check.size(), size_t(2));
    QCOMPARE(files.cmb.size(), 2);
    QCOMPARE(files.progressObjects.size(), size_t(2));
    QVERIFY(files.convertedFileList.empty());
    QVERIFY(files.conversionTaskList.empty());
    QVERIFY(program.state().noOfconvertingFileList.isEmpty());
    QCOMPARE(program.state().count, 2);
    QCOMPARE(program.window().findChild<QLabel*>(QStringLiteral("fileList"))->text(),
             QString(getLocalString("IDS_TXT_FILELIST") + QStringLiteral("  (2)")));
    QVERIFY(program.window().findChild<QWidget*>(QStringLiteral("btnRemoveFile"))->isEnabled());
}

void TestRun::theLastRowOutDisablesRemove() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4")).write()});
    const auto* const remove =
        program.window().findChild<QWidget*>(QStringLiteral("btnRemoveFile"));
    QVERIFY(remove->isEnabled());
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(!remove->isEnabled());
}

void TestRun::okLeavesTheOpenFolderCheckAlone() {
    ControllerFixture program;
    auto* const check =
        program.window().findChild<QCheckBox*>(QStringLiteral("openFolderCheckBtn"));
    check->setChecked(true);
    program.add({program.movie(QStringLiteral("a.mp4")).write()});
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    // Kept: a normal end does not ask the check box.
    QVERIFY(program.fileManager.shown.isEmpty());
    QVERIFY(check->isChecked());
}

void TestRun::openFolderUnticksAndShowsTheFolder() {
    ControllerFixture program;
    auto* const check =
        program.window().findChild<QCheckBox*>(QStringLiteral("openFolderCheckBtn"));
    check->setChecked(true);
    program.add({program.movie(QStringLiteral("a.mp4")).write()});
    program.boxes.promise(1001);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.fileManager.shown, QStringList(program.documents()));
    QVERIFY(!check->isChecked());
    QCOMPARE(program.files().rowCount(), 0);
}

void TestRun::aSummaryOfNothingChangesNothing() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4")).write()});
    program.files().noteConverted(program.files().idList[0]);
    program.state().noOfConvertedFile = 3;
    program.engine().summary().popUpForNoOfConvertedfiles();
    QVERIFY(program.boxes.seen.isEmpty());
    QCOMPARE(program.files().rowCount(), 1);
    QCOMPARE(program.state().noOfConvertedFile, 3);
    QCOMPARE(program.files().convertedFileList.size(), size_t(1));
}

void TestRun::changeConvertingIndex() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4")).write(),
                 program.movie(QStringLiteral("b.mp4")).write()});
    FileList& files = program.files();
    SharedState& state = program.state();
    RowControl& rows = program.engine().rows();

    state.convertingIndex = ConvertingIndex::pauseRequested;
    rows.changeConvertingIndex();
    QCOMPARE(state.convertingIndex, ConvertingIndex::pauseRequested); // an empty queue

    files.enqueue(files.idList[1]);
    rows.changeConvertingIndex();
    QCOMPARE(state.convertingIndex, 1); // kept: the pause request is replaced
    QCOMPARE(state.convertingId, files.idList[1]);

    state.convertingIndex = ConvertingIndex::noRow;
    rows.changeConvertingIndex();
    QCOMPARE(state.convertingIndex, ConvertingIndex::noRow); // stays

    state.convertingIndex = 0;
    files.clearQueue();
    files.enqueue(4711);
    rows.changeConvertingIndex();
    QCOMPARE(state.convertingIndex, ConvertingIndex::noRow); // no such row
    files.clearQueue();
}

void TestRun::aSecondRunConvertsWhatCameLater() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4")).write()});
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    program.add({program.movie(QStringLiteral("b.mp4")).write()});
    bool wasCleared = false;
    program.boxes.promise(okAnswer, false, [&] { wasCleared = !program.state().stopped; });
    QVERIFY(program.runToEnd());
    QVERIFY(wasCleared);
    QVERIFY(QFile::exists(program.output(QStringLiteral("b_HQ_640x480.mp4"))));
    QCOMPARE(program.boxes.seen.size(), 2);
}

// Kept: dragging rows moves the records alone. Every movie is converted once all the same.
void TestRun::reorderedRowsAreAllConverted() {
    ControllerFixture program;
    QStringList movies;
    for (const char* name : {"a.mp4", "b.mp4", "c.mp4"})
        movies += program.movie(QString::fromLatin1(name)).write();
    program.add(movies);
    program.files().moveRecords({0}, 3);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QStringList converted;
    for (const EncoderStart& each : program.encodes())
        converted += each.arguments[2];
    converted.sort();
    QCOMPARE(converted, movies);
    QCOMPARE(namesIn(program.documents()).size(), 3);
}

void TestRun::aRowRemovedWhileAJobBeginsDoesNotChangeItsMovie() {
    ControllerFixture program;
    QStringList movies;
    for (const char* name : {"a.mp4", "b.mp4", "c.mp4"})
        movies += program.movie(QString::fromLatin1(name)).write();
    program.add(movies);
    program.files().recordAt(0)->set(key::status, status::STATCO);
    program.click("btnConvertFile");
    // The job's thread has not had its first word with the main thread.
    program.clickRowButton(0);
    program.boxes.promise(okAnswer);
    QVERIFY(program.waitUntilIdle());
    const QList<EncoderStart> encodes = program.encodes();
    QCOMPARE(encodes.size(), 2);
    QVERIFY(encodes[0].arguments.contains(movies[1]));
    QVERIFY(encodes[1].arguments.contains(movies[2]));
}

REELSHIFT_TEST(tst_run, TestRun, QApplication)
#include "tst_run.moc"

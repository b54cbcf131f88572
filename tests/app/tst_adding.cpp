#include "TestProgram.h"
#include "app/AddChecks.h"
#include "app/ControllerFixture.h"
#include "app/PanelDriver.h"
#include "filelist/ProgressObject.h"
#include "table/FileTableView.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QTest>

namespace {

const QString hevc = QStringLiteral("hevc");

} // namespace

/// What adding movies leaves in the lists and says about it.
class TestAdding final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void recordOfAMovie();
    void listsBesideTheRecord();
    void captionAndChecks();
    void theSameMovieTwice();
    void names_data();
    void names();
    void threeHundredMovies();

    void panelOffersMp4Alone();
    void severalFromThePanel();
    void cancelledPanel();

    void sizes_data();
    void sizes();
    void aSizeOfNoListHasAListOfItsOwn_data();
    void aSizeOfNoListHasAListOfItsOwn();
    void aSizeOfNoListIsNotThePreviousOnes();
};

void TestAdding::recordOfAMovie() {
    ControllerFixture program;
    const QString path =
        program.movie(QStringLiteral("a.b.mp4")).probe(hevc, QStringLiteral("1920x1080")).write();
    program.add({path});
    QCOMPARE(program.files().rowCount(), 1);
    const JobRecord& record = *program.files().recordAt(0);

    const QList<std::pair<QString, QVariant>> expected{
        {key::id, 1},
        {key::name, QStringLiteral("a.b.mp4")},
        {key::srcpath, path},
        // No folder was chosen in this session.
        {key::path, QStringLiteral("/a.b.mp4")},
        {key::check, 1},
        {key::audio, QStringLiteral("AAC")},
        {key::video, QStringLiteral("HEVC")},
        {key::duration, QStringLiteral("00:00:10.00")},
        {key::profile, QStringLiteral("H.264 LV1 : Best Quality")},
        {key::profileForCol, program.files().cmbItems[1]},
        {key::status, QStringLiteral("Waiting")},
        {key::progress, text("IDS_TXT_STATUS_WAITING")},
        {key::image, QStringLiteral("table_close2.png")},
        {key::converted, QStringLiteral("Waiting")},
        {key::conversionstat, QStringLiteral("Running")},
        {key::cmb, program.files().cmbItems[1]},
        {key::resolutionID, 3},
        {key::resolution, QStringLiteral("1920x1080")}};
    const std::vector<QString> keys = record.keys();
    QCOMPARE(keys.size(), size_t(expected.size()));
    for (qsizetype i = 0; i < expected.size(); ++i) {
        QCOMPARE(keys[size_t(i)], expected[i].first);
        QCOMPARE(record.value(keys[size_t(i)]), expected[i].second);
        QCOMPARE(record.value(keys[size_t(i)]).typeId(), expected[i].second.typeId());
    }
}

void TestAdding::listsBesideTheRecord() {
    ControllerFixture program;
    program.add(
        {program.movie(QStringLiteral("a.mp4")).write(),
         program.movie(QStringLiteral("b.mp4")).probe(hevc, QStringLiteral("3840x2160")).write()});
    const FileList& files = program.files();
    QVERIFY(areInStep(files));
    QCOMPARE(files.check, (std::vector<int>{1, 1}));
    QCOMPARE(files.cmb, (QStringList{files.cmbItems[1], files.cmbItems[1]}));
    QCOMPARE(files.idList, (std::vector<int>{1, 2}));
    QCOMPARE(files.resolutionListForTable,
             (QStringList{QStringLiteral("640x480"), QStringLiteral("3840x2160")}));
    QCOMPARE(files.progressObjects.size(), size_t{2});
    QVERIFY(files.arrayControllerNew == files.fileInfoArr);
    QVERIFY(files.conversionTaskList.empty());
    QVERIFY(files.name.isEmpty());
    QVERIFY(program.boxes.seen.isEmpty());
}

void TestAdding::captionAndChecks() {
    ControllerFixture program;
    const auto* const table = program.widget<FileTableView>("theTableNew");
    QVERIFY(!table->btnSelectAll()->isChecked());
    program.add({program.movie(QStringLiteral("a.mp4")).write(),
                 program.movie(QStringLiteral("b.mp4")).write()});
    const QString caption = text("IDS_TXT_FILELIST") + QStringLiteral("  (2)");
    QCOMPARE(program.widget<QLabel>("fileList")->text(), caption);
    QCOMPARE(program.state().fileCountStr, caption);
    QCOMPARE(program.state().countstr, QStringLiteral("(2)"));
    QCOMPARE(program.state().count, qint64{2});
    QVERIFY(table->btnSelectAll()->isChecked());
    QVERIFY(program.widget<QWidget>("btnRemoveFile")->isEnabled());
    QCOMPARE(table->model()->rowCount(), 2);

    // The header's box goes by all rows, not by the new one.
    QVERIFY(
        table->model()->setData(table->model()->index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
    program.add({program.movie(QStringLiteral("c.mp4")).write()});
    QVERIFY(!table->btnSelectAll()->isChecked());
}

void TestAdding::theSameMovieTwice() {
    ControllerFixture program;
    const QString path = program.movie(QStringLiteral("a.mp4")).write();
    program.add({path, path});
    program.add({path});
    QCOMPARE(program.files().idList, (std::vector<int>{1, 2, 3}));
    QVERIFY(program.files().recordAt(0) != program.files().recordAt(1));
    for (int row = 0; row < 3; ++row)
        QCOMPARE(program.files().recordAt(row)->text(key::srcpath), path);
}

void TestAdding::names_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("quotes") << QStringLiteral("say \"it's\" `now`.mp4");
    QTest::newRow("line end") << QStringLiteral("one\ntwo.mp4");
    QTest::newRow("placeholders") << QStringLiteral("%1 100% %n %s.mp4");
    QTest::newRow("markup") << QStringLiteral("<b>bold<br> &amp;.mp4");
    QTest::newRow("emoji") << QString::fromUtf8("🎬 été 日本.mp4");
    QTest::newRow("dash") << QStringLiteral("-i.mp4");
    QTest::newRow("blanks") << QStringLiteral("  .mp4 ");
    QTest::newRow("no extension") << QStringLiteral("movie");
    QTest::newRow("markers") << QStringLiteral("Video, Audio, Duration: 1, hevc 1x1.mp4");
    QTest::newRow("255 bytes") << QString(QString(251, u'n') + QStringLiteral(".mp4"));
}

void TestAdding::names() {
    QFETCH(QString, name);
    ControllerFixture program;
    const QString path = program.movies() + u'/' + name;
    QFile movie(path);
    QVERIFY(movie.open(QIODevice::WriteOnly));
    movie.write("#scripted movie\n[probe]\nreport size=1280x720 duration=00:01:02.03\n");
    movie.close();
    program.add({path});
    QCOMPARE(program.files().rowCount(), 1);
    const JobRecord& record = *program.files().recordAt(0);
    QCOMPARE(record.text(key::name), name);
    QCOMPARE(record.text(key::srcpath), path);
    QCOMPARE(record.text(key::path), QString(u'/' + name));
    QCOMPARE(record.text(key::duration), QStringLiteral("00:01:02.03"));
    QCOMPARE(record.text(key::audio), QStringLiteral("AAC"));
    QCOMPARE(record.text(key::resolution), QStringLiteral("1280x720"));
    const QAbstractItemModel* const model = program.widget<FileTableView>("theTableNew")->model();
    QCOMPARE(model->index(0, 1).data().toString(), name);
}

void TestAdding::threeHundredMovies() {
    ControllerFixture program;
    QStringList paths;
    for (int i = 0; i < 300; ++i)
        paths += program.movie(QStringLiteral("m%1.mp4").arg(i)).write();
    // As if one had been converted: each is examined once.
    program.state().probe.duration = QStringLiteral("00:00:01.00");
    program.add(paths);
    QCOMPARE(program.files().rowCount(), 300);
    QVERIFY(areInStep(program.files()));
    QCOMPARE(program.files().idList.back(), 300);
    QCOMPARE(program.starts().size(), 300);
    QCOMPARE(program.widget<FileTableView>("theTableNew")->model()->rowCount(), 300);
    QCOMPARE(program.widget<QLabel>("fileList")->text(),
             QString(text("IDS_TXT_FILELIST") + QStringLiteral("  (300)")));
}

void TestAdding::panelOffersMp4Alone() {
    ControllerFixture program;
    for (const char* name : {"a.mp4", "b.MP4", "c.MOV", "d.mkv", "e.mp4.txt", "mp4"})
        program.movie(QString::fromLatin1(name)).write();
    QVERIFY(QDir().mkpath(program.movies() + QStringLiteral("/folder")));
    QString title;
    QStringList filters;
    QFileDialog::FileMode mode{};
    oncePanelOpen([&](QFileDialog& panel) {
        title = panel.windowTitle();
        filters = panel.nameFilters();
        mode = panel.fileMode();
        // The folder that was remembered for adding plays no part.
        QVERIFY(panel.directory().path() != program.documents());
        panel.setDirectory(program.movies());
        // Folders are there to be entered.
        const QStringList expected{QStringLiteral("a.mp4"), QStringLiteral("b.MP4"),
                                   QStringLiteral("folder")};
        QTRY_COMPARE(listedNames(panel), expected);
    });
    program.click("btnAddFile");
    QCOMPARE(title, text("IDS_TXT_PANEL_ADD"));
    QCOMPARE(filters, QStringList{text("IDS_TXT_PANEL_FILTER")});
    QCOMPARE(mode, QFileDialog::ExistingFiles);
}

void TestAdding::severalFromThePanel() {
    ControllerFixture program;
    for (const char* name : {"a.mp4", "b \"x\" <i>%1.mp4", "c.mp4", "d.mp4"})
        program.movie(QString::fromLatin1(name)).write();
    program.movie(QStringLiteral("c.mp4")).probe(h264).write();
    program.boxes.promise(1000);
    oncePanelOpen([&](QFileDialog& panel) {
        panel.setDirectory(program.movies());
        QTRY_VERIFY(
            selectNames(panel, {QStringLiteral("a.mp4"), QStringLiteral("b \"x\" <i>%1.mp4"),
                                QStringLiteral("c.mp4"), QStringLiteral("d.mp4")}));
        confirmPanel(panel);
    });
    program.click("btnAddFile");
    QStringList names;
    for (const JobRecordPtr& record : program.files().fileInfoArr)
        names += record->text(key::name);
    names.sort();
    QCOMPARE(names, (QStringList{QStringLiteral("a.mp4"), QStringLiteral("b \"x\" <i>%1.mp4"),
                                 QStringLiteral("d.mp4")}));
    QCOMPARE(program.boxes.messages(), QStringList{text("IDS_TXT_UNSUPPORTED")});
    QVERIFY(areInStep(program.files()));
}

void TestAdding::cancelledPanel() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4")).write(),
                 program.movie(QStringLiteral("b.mp4")).write()});
    FileList& files = program.files();
    // Rows were dragged: what is shown has the old order until movies are added.
    files.moveRecords({1}, 0);
    program.state().checkStatusForSdCardDelay = true;
    program.widget<QWidget>("btnRemoveFile")->setEnabled(false);
    oncePanelOpen([&](QFileDialog& panel) { panel.reject(); });
    program.click("btnAddFile");

    QCOMPARE(files.rowCount(), 2);
    QCOMPARE(program.state().itemId, qint64{2});
    QVERIFY(files.arrayControllerNew == files.fileInfoArr);
    const auto* const table = program.widget<FileTableView>("theTableNew");
    QCOMPARE(table->model()->index(0, 1).data().toString(), QStringLiteral("b.mp4"));
    QVERIFY(table->btnSelectAll()->isChecked());
    QVERIFY(!program.widget<QWidget>("btnRemoveFile")->isEnabled());
    QVERIFY(!program.state().checkStatusForSdCardDelay);
}

void TestAdding::sizes_data() {
    QTest::addColumn<QString>("size");
    QTest::addColumn<int>("id");
    const auto row = [](const char* size, int id) {
        QTest::newRow(size) << QString::fromLatin1(size) << id;
    };
    row("3840x2160", 0);
    row("4096x2160", 1);
    row("2560x1440", 2);
    row("1920x1080", 3);
    row("1280x720", 4);
    row("640x480", 5);
}

void TestAdding::sizes() {
    QFETCH(QString, size);
    QFETCH(int, id);
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4")).probe(hevc, size).write()});
    const JobRecord& record = *program.files().recordAt(0);
    QCOMPARE(record.number(key::resolutionID), id);
    QCOMPARE(record.text(key::resolution), size);
    QCOMPARE(program.files().resolutionListForTable, QStringList{size});
    QVERIFY(!record.contains(key::ownSizes));
}

void TestAdding::aSizeOfNoListHasAListOfItsOwn_data() {
    QTest::addColumn<QString>("size");
    QTest::addColumn<QStringList>("offered");
    const auto row = [](const char* size, const char* offered) {
        QTest::newRow(size) << QString::fromLatin1(size)
                            << QString::fromLatin1(offered).split(u' ');
    };
    row("720x1280", "720x1280 360x640");
    row("7680x4320", "3840x2160 1920x1080");
    row("321x241", "320x240 160x120");
    row("3x480", "2x480");
}

void TestAdding::aSizeOfNoListHasAListOfItsOwn() {
    QFETCH(const QString, size);
    QFETCH(const QStringList, offered);
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4")).probe(hevc, size).write()});
    const JobRecord& record = *program.files().recordAt(0);
    QCOMPARE(record.number(key::resolutionID), -1);
    QCOMPARE(record.value(key::ownSizes).toStringList(), offered);
    QCOMPARE(record.text(key::resolution), offered.first());
    QCOMPARE(program.files().resolutionListForTable, QStringList{offered.first()});
}

void TestAdding::aSizeOfNoListIsNotThePreviousOnes() {
    ControllerFixture program;
    const auto movie = [&](const char* name, const char* size) {
        return program.movie(QString::fromLatin1(name))
            .probe(hevc, QString::fromLatin1(size))
            .write();
    };
    const QString large = movie("a.mp4", "1920x1080");
    const QString odd = movie("b.mp4", "720x576");
    const QString rejected =
        program.movie(QStringLiteral("c.mp4")).probe(h264, QStringLiteral("3840x2160")).write();
    program.boxes.promise(1000);
    program.add({odd, large, odd, rejected, odd});
    const QStringList expected{QStringLiteral("720x576"), QStringLiteral("1920x1080"),
                               QStringLiteral("720x576"), QStringLiteral("720x576")};
    QCOMPARE(program.files().resolutionListForTable, expected);
    QCOMPARE(program.files().recordAt(1)->number(key::resolutionID), 3);
    QCOMPARE(program.files().recordAt(3)->number(key::resolutionID), -1);
}

REELSHIFT_TEST(tst_adding, TestAdding, QApplication)
#include "tst_adding.moc"

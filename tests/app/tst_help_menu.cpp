#include "TestProgram.h"
#include "app/HelpMenu.h"
#include "app/MainWindow.h"
#include "app/RunScene.h"
#include "convert/ConversionEngine.h"
#include "table/FileTableView.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QTextBlock>
#include <QTextBrowser>

/// What is copied of a movie that was not converted, and what F1 shows.
class TestHelpMenu final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void detailsOfAFailure();
    void detailsFollowTheirMovie();
    void manualInTheWindowsLanguage_data();
    void manualInTheWindowsLanguage();
};

namespace {

QStringList rowMenu(RunScene& scene, int row, const QString& choice = {}) {
    QMenu menu;
    Q_EMIT scene.program.window().findChild<FileTableView*>()->rowMenuOpens(&menu, row);
    QStringList names;
    for (QAction* const each : menu.actions()) {
        if (each->isSeparator())
            continue;
        names += each->text();
        if (each->text() == choice)
            each->trigger();
    }
    return names;
}

HelpMenu::Parts partsOf(ControllerFixture& program) {
    return {program.mainThread(), program.gate(),           program.processes(),
            program.files(),      program.engine().watch(), program.window()};
}

QString label(const char* id) {
    return getLocalString(id);
}

} // namespace

void TestHelpMenu::detailsOfAFailure() {
    RunScene scene;
    const HelpMenu help(partsOf(scene.program), {QStringLiteral("9.8.7.6"), {}, {}});
    scene.addScript(a, {QStringLiteral("progress 1"), QStringLiteral("exit 3")});
    scene.add({b});
    const QStringList plain{label("IDS_MENU_HELP"), label("IDS_MENU_ABOUT")};
    QCOMPARE(rowMenu(scene, 0), plain);
    QVERIFY(scene.begin());
    scene.goToEnd(b);
    scene.program.boxes.promise(1001); // Skip
    scene.program.boxes.promise(1000); // the summary
    QVERIFY(scene.program.waitUntilIdle());
    QCOMPARE(rowMenu(scene, 0, label("IDS_MENU_COPY_DETAILS")),
             QStringList(label("IDS_MENU_COPY_DETAILS")) + plain);
    const QStringList copied = QGuiApplication::clipboard()->text().split(u'\n');
    QVERIFY2(copied[0].startsWith(QStringLiteral("Quorvex Reelshift 9.8.7.6, Qt ")),
             qPrintable(copied[0]));
    QVERIFY(copied[1].startsWith(a));
    QVERIFY(copied.filter(QStringLiteral("not converted, ")).size() == 1);
    QVERIFY(copied.filter(QStringLiteral("frame=")).size() >= 1);
    QCOMPARE(rowMenu(scene, 1), plain);
    QCOMPARE(rowMenu(scene, 7), plain);
}

void TestHelpMenu::detailsFollowTheirMovie() {
    RunScene scene;
    const HelpMenu help(partsOf(scene.program), {QStringLiteral("1"), {}, {}});
    for (const QString& each : {a, b})
        scene.addScript(each, {QStringLiteral("progress 1"), QStringLiteral("exit 3")});
    QVERIFY(scene.begin());
    for (const int answer : {1001, 1001, 1000})
        scene.program.boxes.promise(answer);
    QVERIFY(scene.program.waitUntilIdle());
    const auto hasDetails = [&](const QString& name) {
        return rowMenu(scene, static_cast<int>(scene.names().indexOf(name)))
            .contains(label("IDS_MENU_COPY_DETAILS"));
    };
    QVERIFY(hasDetails(a) && hasDetails(b));
    scene.program.clickRowButton(0);
    QCOMPARE(scene.names(), QStringList(b));
    QVERIFY(hasDetails(b));
}

void TestHelpMenu::manualInTheWindowsLanguage_data() {
    QTest::addColumn<QString>("heading");
    QTest::addColumn<QString>("sentence");
    const auto row = [](const char* language, const char* heading, const char* sentence) {
        QTest::newRow(language) << QString::fromUtf8(heading) << QString::fromUtf8(sentence);
    };
    row("en", "DESCRIPTION", "opens a window with a list of movies.");
    row("de", "BESCHREIBUNG", "öffnet ein Fenster mit einer Liste von Filmen.");
    row("ar", "الوصف", "نافذة فيها قائمة بمقاطع الفيديو.");
    row("ja", "説明", "は動画のリストがあるウィンドウを開きます。動画は");
}

void TestHelpMenu::manualInTheWindowsLanguage() {
    QFETCH(QString, heading);
    QFETCH(QString, sentence);
    const QString language = QString::fromLatin1(QTest::currentDataTag());
    ControllerFixture program(std::chrono::milliseconds(50), QLocale(language));
    const HelpMenu help(partsOf(program), {{}, {}, language});
    MainWindow& window = program.window();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_F1);
    const auto* const text = window.findChild<QTextBrowser*>();
    QVERIFY(text && text->isVisible());
    QTextDocument& page = *text->document();
    const QString shown = page.toPlainText();
    QVERIFY2(shown.contains(u'\n' + heading + u'\n'), qPrintable(shown));
    QVERIFY2(shown.contains(sentence), qPrintable(shown));
    const Qt::LayoutDirection direction = QLocale(language).textDirection();
    for (QTextBlock each = page.begin(); each.isValid(); each = each.next()) {
        QVERIFY2(each.text().isEmpty() || each.textDirection() == direction,
                 qPrintable(each.text()));
    }
    // What is typed runs to the right in every language; before its first letter both sides meet.
    QTextCursor at = page.find(QStringLiteral("-v, --version"));
    QVERIFY(!at.isNull());
    int left = -1;
    for (int i = at.selectionStart() + 1, end = at.selectionEnd(); i < end; ++i) {
        at.setPosition(i);
        QVERIFY2(text->cursorRect(at).left() > left, qPrintable(shown.mid(i)));
        left = text->cursorRect(at).left();
    }
}

REELSHIFT_TEST(tst_help_menu, TestHelpMenu, QApplication)
#include "tst_help_menu.moc"

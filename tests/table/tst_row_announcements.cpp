#include "TestProgram.h"
#include "filelist/ProgressObject.h"
#include "filelist/StatusWords.h"
#include "platform/LocalizedStrings.h"
#include "table/RowAnnouncements.h"
#include "table/TableApplication.h"
#include "table/TableFixture.h"
#include "widgets/Announcer.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

namespace {

/// Rows, and what is said of them.
struct Scene {
    explicit Scene(int rows) {
        QObject::connect(&announcer, &Announcer::said, &announcer,
                         [this](const QString& text) { said += text.split(u'\n'); });
        f.addRows(rows);
        f.model.reload();
        settle();
    }
    /// Until whatever would be said has been.
    void settle() const { QTRY_VERIFY(!announcements.isWaiting()); }
    void change(int row, const QString& word, const QString& shown, int step = 0) {
        f.list.recordAt(row)->set(key::progress, shown);
        f.list.progressObjects.at(size_t(row))->changestat(word);
        f.list.progressObjects.at(size_t(row))->incrementStep(step);
        f.model.rowChanged(row);
    }
    [[nodiscard]] static QString sentence(const char* movie, const char* id) {
        return getLocalString("IDS_A11Y_ROW_STATUS")
            .arg(QString::fromLatin1(movie), getLocalString(id));
    }

    TableFixture f;
    QWidget window;
    Announcer announcer{&window};
    RowAnnouncements announcements{f.model, announcer};
    QStringList said;
};

} // namespace

class TestRowAnnouncements final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void newRowsAreNotSaid();
    void aChangeIsSaidOnce();
    void percentagesAreNotSaid();
    void whatChangesTogetherIsSaidAsOne();
    void whatComesAndGoesIsNotSaid();
    void removedRowsAreNotSaid();
    void aNameIsNoPlaceholder();
    void theAnnouncerIsThereAndNotSeen();
};

void TestRowAnnouncements::newRowsAreNotSaid() {
    Scene s(3);
    s.f.addRows(2);
    s.f.model.reload();
    s.settle();
    QCOMPARE(s.said, QStringList());
}

void TestRowAnnouncements::aChangeIsSaidOnce() {
    Scene s(2);
    s.change(1, status::STATCR, getLocalString("IDS_TXT_STATUS_WAITING"));
    QTRY_COMPARE(s.said, QStringList{Scene::sentence("movie 1.mp4", "IDS_A11Y_ROW_PROGRESS")});
    s.f.model.reload();
    s.settle();
    QCOMPARE(s.said.size(), 1);
    s.change(1, {}, getLocalString("IDS_TXT_STATUS_CONVERTED"));
    QTRY_COMPARE(s.said.size(), 2);
    QCOMPARE(s.said.last(), Scene::sentence("movie 1.mp4", "IDS_TXT_STATUS_CONVERTED"));
}

void TestRowAnnouncements::percentagesAreNotSaid() {
    Scene s(1);
    for (int step = 1; step <= 5; ++step) {
        s.change(0, status::STATCR, getLocalString("IDS_TXT_STATUS_WAITING"), step);
        s.settle();
    }
    QCOMPARE(s.said.size(), 1);
}

void TestRowAnnouncements::whatChangesTogetherIsSaidAsOne() {
    Scene s(2);
    const QSignalSpy sentences(&s.announcer, &Announcer::said);
    s.change(0, {}, getLocalString("IDS_TXT_STATUS_CONVERTED"));
    s.change(1, status::STATCR, getLocalString("IDS_TXT_STATUS_WAITING"));
    QTRY_COMPARE(s.said, (QStringList{Scene::sentence("movie 0.mp4", "IDS_TXT_STATUS_CONVERTED"),
                                      Scene::sentence("movie 1.mp4", "IDS_A11Y_ROW_PROGRESS")}));
    QCOMPARE(sentences.size(), 1);
}

void TestRowAnnouncements::whatComesAndGoesIsNotSaid() {
    Scene s(1);
    s.change(0, {}, getLocalString("IDS_TXT_STATUS_PAUSED"));
    s.change(0, {}, getLocalString("IDS_TXT_STATUS_WAITING"));
    s.settle();
    QCOMPARE(s.said, QStringList());
}

void TestRowAnnouncements::removedRowsAreNotSaid() {
    Scene s(3);
    s.f.removeRows({0});
    s.settle();
    QCOMPARE(s.said, QStringList());
    s.change(0, {}, getLocalString("IDS_TXT_STATUS_PAUSED"));
    QTRY_COMPARE(s.said, QStringList{Scene::sentence("movie 1.mp4", "IDS_TXT_STATUS_PAUSED")});
}

void TestRowAnnouncements::aNameIsNoPlaceholder() {
    Scene s(0);
    s.f.addRow(QStringLiteral("%2 %1.mp4"));
    s.f.model.reload();
    s.settle();
    s.change(0, {}, getLocalString("IDS_TXT_STATUS_PAUSED"));
    QTRY_COMPARE(s.said, QStringList{Scene::sentence("%2 %1.mp4", "IDS_TXT_STATUS_PAUSED")});
}

// What reaches the bus is tested end to end.
void TestRowAnnouncements::theAnnouncerIsThereAndNotSeen() {
    Scene s(0);
    s.window.resize(200, 100);
    s.window.show();
    const QImage before = s.window.grab().toImage();
    s.announcer.say(QStringLiteral("one"));
    s.announcer.say(QStringLiteral("two"));
    QTRY_COMPARE(s.said, (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
    QVERIFY(!s.announcer.isVisible());
    QCOMPARE(s.window.grab().toImage(), before);
    const QAccessibleInterface* const heard = QAccessible::queryAccessibleInterface(&s.announcer);
    QCOMPARE(heard->role(), QAccessible::Notification);
    QCOMPARE(heard->text(QAccessible::Name), QStringLiteral("one\ntwo"));
    // A reader would pass over what says that it cannot be seen.
    QVERIFY(!heard->state().invisible);
}

REELSHIFT_TEST(tst_row_announcements, TestRowAnnouncements, TableApplication)
#include "tst_row_announcements.moc"

#include "TestProgram.h"
#include "convert/LauncherRemarks.h"

#include <QtTest>

class TestLauncherRemarks final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void beginnings_data();
    void beginnings();
};

void TestLauncherRemarks::beginnings_data() {
    QTest::addColumn<QByteArray>("said");
    QTest::addColumn<QStringList>("remarks");
    const QByteArray words("reelshift: for the log: ");
    QTest::newRow("two") << words + "one\n" + words + "two\nffmpeg version 7\n"
                         << QStringList{QStringLiteral("one"), QStringLiteral("two")};
    QTest::newRow("none") << QByteArray("ffmpeg version 7\n") << QStringList{};
    QTest::newRow("later") << "ffmpeg version 7\n" + words + "a title\n" << QStringList{};
    QTest::newRow("unfinished") << words + "one\n" + words + "tw"
                                << QStringList{QStringLiteral("one")};
    QTest::newRow("empty") << words + "\n\n" + words + "x\n" << QStringList{QString()};
    QTest::newRow("nothing") << QByteArray() << QStringList{};
}

void TestLauncherRemarks::beginnings() {
    QFETCH(const QByteArray, said);
    QFETCH(const QStringList, remarks);
    for (qsizetype size = 1; size <= said.size() + 1; ++size) {
        LauncherRemarks reader;
        QStringList found;
        for (qsizetype at = 0; at < said.size(); at += size)
            found += reader.add(said.mid(at, size));
        QCOMPARE(found, remarks);
    }
}

REELSHIFT_TEST(tst_launcherremarks, TestLauncherRemarks, NoApplication)
#include "tst_launcherremarks.moc"

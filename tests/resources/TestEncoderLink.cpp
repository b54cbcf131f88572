#include <QFileInfo>
#include <QtTest>

class TestEncoderLink final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void resourceFolderLinksToTheEncoderFoundByTheBuild();
};

void TestEncoderLink::resourceFolderLinksToTheEncoderFoundByTheBuild() {
    const QFileInfo link(QStringLiteral(REELSHIFT_TEST_RESOURCES "/ffmpeg"));
    QVERIFY(link.isSymLink());
    QCOMPARE(link.symLinkTarget(), QStringLiteral(FFMPEG_EXECUTABLE));
    QVERIFY(link.isExecutable());
}

QTEST_APPLESS_MAIN(TestEncoderLink)
#include "TestEncoderLink.moc"

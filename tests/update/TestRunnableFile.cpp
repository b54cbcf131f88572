#include "TestProgram.h"
#include "update/RunnableFile.h"

#include <QtTest>

class TestRunnableFile final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tells_data();
    void tells();
};

void TestRunnableFile::tells_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("beginning");
    QTest::addColumn<bool>("runnable");

    const QByteArray package(
        "!<arch>\ndebian-binary   1342943816  0     0     100644  4     `\n2.0");
    for (const char* const name : {"a.deb", "a (1).deb", "a.rpm", "a.flatpakref", "a.tar.xz",
                                   "a.zip", "a.txt", "a", "desktop", "run.deb"})
        QTest::newRow(name) << name << QByteArray("anything") << false;
    for (const char* const name :
         {"a.sh", "a.run", "a.AppImage", "a.appimage", "a.jar", "a.JAR", "a.desktop", "a.Desktop",
          "a (1).run", "a.py", "a.exe", "a.pl", ".desktop"})
        QTest::newRow(name) << name << QByteArray("anything") << true;

    QTest::newRow("package") << "a.deb" << package << false;
    QTest::newRow("text that talks of scripts")
        << "a.txt" << QByteArray("This is how a script begins: #!/bin/sh") << false;
    QTest::newRow("archive") << "a.zip" << QByteArray("PK\x03\x04readme.txt") << false;
    QTest::newRow("nothing") << "a.deb" << QByteArray() << false;
    QTest::newRow("script") << "a.deb" << QByteArray("#!/bin/sh\n") << true;
    QTest::newRow("script behind a mark") << "a.txt" << QByteArray("\xef\xbb\xbf#!/bin/sh") << true;
    QTest::newRow("script behind white space") << "a.txt" << QByteArray(" \n\t#! /bin/sh") << true;
    QTest::newRow("program") << "a.deb"
                             << QByteArray("\x7f"
                                           "ELF\x02\x01\x01")
                             << true;
    QTest::newRow("program of another system") << "a" << QByteArray("MZ\x90") << true;
    QTest::newRow("archive of Java")
        << "a.zip" << QByteArray("PK\x03\x04..META-INF/MANIFEST.MF") << true;
    QTest::newRow("desktop entry") << "a.txt" << QByteArray("[Desktop Entry]\nExec=sh") << true;
    QTest::newRow("desktop entry behind remarks")
        << "a" << QByteArray("#!not\n# a\n\n[Desktop Entry]\r\nExec=sh") << true;
    QTest::newRow("old desktop entry") << "a" << QByteArray("[KDE Desktop Entry]\nExec=sh") << true;
}

void TestRunnableFile::tells() {
    QFETCH(QString, name);
    QFETCH(QByteArray, beginning);
    QTEST(isRunnableFile(name, beginning), "runnable");
}

REELSHIFT_TEST(test_runnable_file, TestRunnableFile, NoApplication)
#include "TestRunnableFile.moc"

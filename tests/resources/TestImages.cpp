#include "Palettes.h"
#include "TestProgram.h"
#include "resources/ApplicationIcon.h"
#include "resources/DrawnImage.h"

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QtTest>

#include <algorithm>
#include <cmath>

/// Loads every image out of the resources that the linker put into this very program.
class TestImages final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void drawnAtAllDensities_data();
    void drawnAtAllDensities();
    void screensGetTheDrawingOfTheirDensity_data();
    void screensGetTheDrawingOfTheirDensity();
    void rowButtonsStandOutOnLightAndDark_data();
    void rowButtonsStandOutOnLightAndDark();
    void rowButtonsDiffer();
    void applicationIconHasEverySize();
    void applicationPictureHasTheSizeThatIsWanted();
};

void TestImages::drawnAtAllDensities_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("side");
    QTest::newRow("remove") << QStringLiteral("table_close2") << 20;
    QTest::newRow("pause") << QStringLiteral("table_pause2") << 20;
    QTest::newRow("resume") << QStringLiteral("table_play2") << 20;
    QTest::newRow("check column") << QStringLiteral("table_pause") << 16;
    QTest::newRow("message box") << QStringLiteral("Popup_I") << 64;
}

void TestImages::drawnAtAllDensities() {
    QFETCH(QString, name);
    QFETCH(int, side);
    // An image reads exactly the file that it is given, a pixmap would choose one itself.
    const QImage plain(QStringLiteral(":/images/%1.png").arg(name));
    QVERIFY(!plain.isNull());
    QCOMPARE(plain.size(), QSize(side, side));
    for (const int density : {2, 3}) {
        QImage dense;
        QFile file(QStringLiteral(":/images/%1@%2x.png").arg(name).arg(density));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(dense.load(&file, "PNG"));
        QCOMPARE(dense.size(), density * plain.size());
    }
    QVERIFY(plain.hasAlphaChannel());
    QCOMPARE(qAlpha(plain.pixel(0, 0)), 0);
    QVERIFY(qAlpha(plain.pixel(side / 2, side / 2)) > 0);
}

void TestImages::screensGetTheDrawingOfTheirDensity_data() {
    drawnAtAllDensities_data();
}

void TestImages::screensGetTheDrawingOfTheirDensity() {
    QFETCH(QString, name);
    QFETCH(int, side);
    const QIcon icon = drawnImage(name);
    // Decided by the application's own density: the test also runs with others. A drawing that
    // is too small would come in its own size, for the screen to blow up.
    const QPixmap drawn = icon.pixmap(QSize(side, side), qGuiApp->devicePixelRatio());
    QCOMPARE(drawn.size(), QSize(side, side) * qGuiApp->devicePixelRatio());
    QCOMPARE(drawn.devicePixelRatio(), qGuiApp->devicePixelRatio());
}

void TestImages::rowButtonsStandOutOnLightAndDark_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("remove") << QStringLiteral("table_close2");
    QTest::newRow("pause") << QStringLiteral("table_pause2");
    QTest::newRow("resume") << QStringLiteral("table_play2");
}

void TestImages::rowButtonsStandOutOnLightAndDark() {
    QFETCH(QString, name);
    const QImage image(QStringLiteral(":/images/%1.png").arg(name));
    const QColor disc = image.pixelColor(10, 2);
    QCOMPARE(disc.alpha(), 255);
    for (const QColor& background :
         {QColor(0xff, 0xff, 0xff), QColor(0xf0, 0xf0, 0xf0), QColor(0x2b, 0x2b, 0x2b)}) {
        QVERIFY2(contrast(disc, background) >= 3.0, qPrintable(background.name()));
    }
}

void TestImages::rowButtonsDiffer() {
    const QImage remove(QStringLiteral(":/images/table_close2.png"));
    const QImage pause(QStringLiteral(":/images/table_pause2.png"));
    const QImage resume(QStringLiteral(":/images/table_play2.png"));
    QVERIFY(remove != pause);
    QVERIFY(pause != resume);
    QVERIFY(resume != remove);
}

void TestImages::applicationIconHasEverySize() {
    const QIcon icon = applicationIcon();
    const QList<QSize> sizes = icon.availableSizes();
    QCOMPARE(sizes.size(), 8);
    for (const QSize& size : sizes) {
        QCOMPARE(icon.pixmap(size, 1.0).size(), size);
    }
    QVERIFY(sizes.contains(QSize(16, 16)));
    QVERIFY(sizes.contains(QSize(256, 256)));
}

void TestImages::applicationPictureHasTheSizeThatIsWanted() {
    QVERIFY(!smallApplicationIcon().availableSizes().contains(QSize(128, 128)));
    for (const qreal density : {1.0, 1.5, 2.0}) {
        const QPixmap picture = applicationPicture(90, density);
        QCOMPARE(picture.size(), QSize(90, 90) * density);
        QCOMPARE(picture.deviceIndependentSize(), QSizeF(90, 90));
        QVERIFY(picture.toImage().pixelColor(picture.width() / 2, picture.height() / 2).alpha() >
                0);
    }
}

REELSHIFT_TEST(test_images, TestImages, QGuiApplication)
#include "TestImages.moc"

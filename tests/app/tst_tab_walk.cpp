#include "Palettes.h"
#include "TestProgram.h"
#include "app/MainWindow.h"
#include "app/RunScene.h"
#include "table/FileTableView.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QStyleFactory>
#include <QTest>

#include <utility>

/// A walk through the window with the Tab key, by somebody who sees and by somebody who listens.
class TestTabWalk final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void everyControlIsNamedAndInOrder_data();
    void everyControlIsNamedAndInOrder();
    void theFocusIsSeen_data();
    void theFocusIsSeen();
    void theLonelyCheckBoxIsSeen_data() { theFocusIsSeen_data(); }
    void theLonelyCheckBoxIsSeen();
    void itFitsASmallScreen();

private:
    static QList<QWidget*> walk(MainWindow& window);
    static QImage pictureOf(const QWidget& control);
    static int changedPixels(const QImage& one, const QImage& other);
};

void TestTabWalk::initTestCase() {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
}

void TestTabWalk::cleanup() {
    QApplication::setPalette(palettes::light());
}

/// The controls in the order in which Tab comes to them, each once.
QList<QWidget*> TestTabWalk::walk(MainWindow& window) {
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window))
        qFatal("the window is not active");
    auto* const first = window.findChild<QWidget*>(QStringLiteral("btnAddFile"));
    first->setFocus(Qt::TabFocusReason);
    QList<QWidget*> seen;
    while (QApplication::focusWidget() && !seen.contains(QApplication::focusWidget())) {
        seen << QApplication::focusWidget();
        QTest::keyClick(seen.last(), Qt::Key_Tab);
    }
    return seen;
}

/// With some air around it, where a style may draw the focus.
QImage TestTabWalk::pictureOf(const QWidget& control) {
    const QWidget* const window = control.window();
    const QRect place(control.mapTo(window, QPoint(-2, -2)), control.size() + QSize(4, 4));
    return const_cast<QWidget*>(window)->grab(place).toImage();
}

int TestTabWalk::changedPixels(const QImage& one, const QImage& other) {
    constexpr double leastDifference = 1.3;
    int changed = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x)
            changed +=
                contrast(one.pixelColor(x, y), other.pixelColor(x, y)) >= leastDifference ? 1 : 0;
    }
    return changed;
}

void TestTabWalk::everyControlIsNamedAndInOrder_data() {
    QTest::addColumn<int>("rows");
    QTest::newRow("empty") << 0;
    QTest::newRow("rows") << 2;
}

void TestTabWalk::everyControlIsNamedAndInOrder() {
    QFETCH(int, rows);
    RunScene scene;
    for (int row = 0; row < rows; ++row)
        scene.add({QString(QChar(u'a' + row))});
    const QList<QWidget*> seen = walk(scene.program.window());
    QStringList names;
    for (const QWidget* const each : seen)
        names << each->objectName();
    QStringList expected{QStringLiteral("btnAddFile"),         QStringLiteral("btnRemoveFile"),
                         QStringLiteral("comboBox"),           QStringLiteral("btnSelectAll"),
                         QStringLiteral("theTableNew"),        QStringLiteral("outputFolderPath"),
                         QStringLiteral("btnSelectFolder"),    QStringLiteral("btnOpenFolder"),
                         QStringLiteral("openFolderCheckBtn"), QStringLiteral("btnStop"),
                         QStringLiteral("btnConvertFile")};
    if (rows == 0)
        expected.removeAll(QStringLiteral("btnRemoveFile"));
    QCOMPARE(names, expected);
    QPoint last(0, 0);
    for (QWidget* const each : seen) {
        QAccessibleInterface* const heard = QAccessible::queryAccessibleInterface(each);
        QVERIFY2(!heard->text(QAccessible::Name).trimmed().isEmpty(),
                 qPrintable(each->objectName()));
        QVERIFY2(!heard->text(QAccessible::Description).isEmpty(), qPrintable(each->objectName()));
        const QPoint place = each->mapTo(each->window(), QPoint(0, each->height() / 2));
        const bool isInLine = std::abs(place.y() - last.y()) < 8;
        QVERIFY2(isInLine ? place.x() > last.x() : place.y() > last.y(),
                 qPrintable(each->objectName()));
        last = place;
    }
}

void TestTabWalk::theFocusIsSeen_data() {
    QTest::addColumn<int>("palette");
    QTest::addColumn<int>("rows");
    for (int i = 0; i < int(std::size(palettes::all)); ++i) {
        QTest::addRow("%s, empty", palettes::all[i].name) << i << 0;
        QTest::addRow("%s, rows", palettes::all[i].name) << i << 2;
    }
}

void TestTabWalk::theFocusIsSeen() {
    QFETCH(int, palette);
    QFETCH(int, rows);
    QApplication::setPalette(palettes::all[palette].make());
    RunScene scene;
    for (int row = 0; row < rows; ++row)
        scene.add({QString(QChar(u'a' + row))});
    const QList<QWidget*> seen = walk(scene.program.window());
    QVERIFY(seen.size() >= 10);
    for (qsizetype i = 0; i < seen.size(); ++i) {
        // By the key itself: later releases of Qt show the focus to who uses keys alone.
        QWidget* const before = seen.at(i > 0 ? i - 1 : seen.size() - 1);
        QWidget* const each = seen.at(i);
        before->setFocus(Qt::TabFocusReason);
        QTest::keyClick(before, Qt::Key_Tab);
        QTRY_VERIFY(each->hasFocus());
        const QImage with = pictureOf(*each);
        each->clearFocus();
        const int changed = changedPixels(with, pictureOf(*each));
        QVERIFY2(changed >= 20,
                 qPrintable(QStringLiteral("%1: %2 pixels").arg(each->objectName()).arg(changed)));
    }
}

// Its caption is a label of its own, so that nothing but its frame shows it.
void TestTabWalk::theLonelyCheckBoxIsSeen() {
    QFETCH(int, palette);
    RunScene scene;
    QApplication::setPalette(palettes::all[palette].make()); // while the window is open
    auto* const box = scene.program.widget<QCheckBox>("openFolderCheckBtn");
    for (const bool isTicked : {false, true}) {
        box->setChecked(isTicked);
        const double found = contrastIn(box->grab().toImage());
        QVERIFY2(found >= 1.4, qPrintable(QString::number(found)));
    }
}

// 1024x600 at a scale of 1.5, less the frame of the window.
void TestTabWalk::itFitsASmallScreen() {
    RunScene scene;
    scene.add({QStringLiteral("a"), QStringLiteral("b")});
    MainWindow& window = scene.program.window();
    const QSize room(667, 352);
    const QSize least = window.minimumSizeHint();
    QVERIFY2(least.width() <= room.width() && least.height() <= room.height(),
             qPrintable(QStringLiteral("%1x%2").arg(least.width()).arg(least.height())));
    window.resize(least);
    const auto* const table = scene.program.widget<FileTableView>("theTableNew");
    // A movie can be seen, and every control is whole.
    QTRY_VERIFY(table->viewport()->height() >= table->rowHeight(0));
    for (const QWidget* const each : walk(window)) {
        const QRect place(each->mapTo(&window, QPoint()), each->size());
        QVERIFY2(window.rect().contains(place), qPrintable(each->objectName()));
        if (each != table)
            QVERIFY2(each->height() >= each->minimumSizeHint().height(),
                     qPrintable(each->objectName()));
    }
}

REELSHIFT_TEST(tst_tab_walk, TestTabWalk, QApplication)
#include "tst_tab_walk.moc"

#include "TestProgram.h"
#include "platform/LocalizedStrings.h"
#include "widgets/BoxDriver.h"
#include "widgets/MessageText.h"
#include "widgets/PopUpBoxes.h"

#include <QApplication>
#include <QDir>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <memory>

namespace {

QPalette darkPalette() {
    QPalette dark(QColor(0x2d, 0x2d, 0x30));
    dark.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::ButtonText, Qt::white);
    return dark;
}

} // namespace

/// Boxes on a screen that may be too small for what they say, in every shade and direction.
class TestPopUpBoxesLooks final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup() { QVERIFY(!QApplication::activeModalWidget()); }
    void staysOnTheScreen_data();
    void staysOnTheScreen();
    void manyButtonsStandInAColumn();
    void pictures_data();
    void pictures();

private:
    std::unique_ptr<StringTable> texts_;
};

void TestPopUpBoxesLooks::initTestCase() {
    texts_ = std::make_unique<StringTable>(QStringLiteral(REELSHIFT_TEST_RESOURCES),
                                           QLocale(QStringLiteral("en")));
    QVERIFY(texts_->isLoaded());
}

void TestPopUpBoxesLooks::staysOnTheScreen_data() {
    QTest::addColumn<QString>("message");

    const QString heading = QStringLiteral("A file of this name exists already.\n");
    QTest::newRow("unbroken name") << heading + QString(255, QLatin1Char('W'));
    QTest::newRow("name of line breaks") << heading + QString(255, QLatin1Char('\n'));
    QTest::newRow("right-to-left override")
        << heading + QChar(0x202E) + QString(200, QLatin1Char('m')) + QStringLiteral("4pm.gpj");
    QTest::newRow("Hebrew without a blank") << heading + QString(120, QChar(0x05D0));
    QTest::newRow("long path") << heading + QStringLiteral("/home/user") +
                                      QStringLiteral("/aVeryLongFolder").repeated(250);
    QTest::newRow("control characters")
        << heading + QStringLiteral("a\tb\vc\fd\re\x1b[31m") + QChar(0x2028) + QChar(0);
    QTest::newRow("no text at all") << QString();
}

void TestPopUpBoxesLooks::staysOnTheScreen() {
    QFETCH(QString, message);

    onceBoxOpen([&](MessageBox& box) {
        const QRect screen = box.screen()->availableGeometry();
        QVERIFY2(box.frameGeometry().width() <= screen.width() &&
                     box.frameGeometry().height() <= screen.height(),
                 qPrintable(QStringLiteral("%1 x %2").arg(box.width()).arg(box.height())));
        const auto* const area = box.findChild<QScrollArea*>();
        const auto* const text = static_cast<const MessageText*>(area->widget());
        // Nothing is cut off: the lines are as wide as what is seen, and the rest can be scrolled.
        QVERIFY(text->width() <= area->viewport()->width());
        QVERIFY(text->height() >= text->heightForWidth(text->width()));
        QCOMPARE(area->verticalScrollBar()->maximum() > 0,
                 text->height() > area->viewport()->height());
        QCOMPARE(area->focusPolicy() != Qt::NoFocus, area->verticalScrollBar()->maximum() > 0);
        for (const auto* button : buttonsByPlace(box))
            QVERIFY(box.rect().contains(button->geometry()));
        press(box, 1000);
    });
    PopUpBoxes().PopUpMesgWithCheckBox(
        {message, QStringLiteral("Stop"), QStringLiteral("Skip"), QStringLiteral("For all")});
}

void TestPopUpBoxesLooks::manyButtonsStandInAColumn() {
    QStringList request{QStringLiteral("Narrow screen")};
    for (int index = 0; index < 4; ++index)
        request << QStringLiteral("A very long title for a button, translated twice %1").arg(index);
    onceBoxOpen([&](MessageBox& box) {
        QVERIFY(box.width() <= box.screen()->availableGeometry().width());
        int bottom = 0;
        for (int code = 1000; code < 1004; ++code) {
            const auto* const button =
                box.findChild<QPushButton*>(QStringLiteral("popUpButton%1").arg(code));
            QVERIFY(button->y() >= bottom);
            bottom = button->geometry().bottom();
        }
        press(box, 1002);
    });
    QCOMPARE(PopUpBoxes().PopUpMesg(request), 1002);
}

void TestPopUpBoxesLooks::pictures_data() {
    QTest::addColumn<QStringList>("request");
    QTest::addColumn<bool>("dark");
    QTest::addColumn<Qt::LayoutDirection>("direction");

    const QString same = getLocalString("IDS_TXT_POPUP_SAMENAME") + QLatin1Char('\n');
    const QStringList conflict{
        getLocalString("IDS_BTN_POPUP_CANCEL"), getLocalString("IDS_BTN_POPUP_DUPLICATE"),
        getLocalString("IDS_BTN_POPUP_SKIP"), getLocalString("IDS_BTN_POPUP_REPLACE"),
        getLocalString("IDS_TXT_POPUP_DOFORERROR")};
    const QStringList plain{same + QStringLiteral("/home/user/Videos/Holiday.mp4")};
    const QStringList hostile{same + QStringLiteral("/home/user/<b>R&B</b> ") + QChar(0x202E) +
                              QStringLiteral("4pm.") + QString(240, QLatin1Char('x'))};
    const QStringList lines{same + QStringLiteral("line\n").repeated(80)};
    for (const bool dark : {false, true}) {
        const char* const shade = dark ? "dark" : "light";
        QTest::addRow("short-%s", shade)
            << QStringList{getLocalString("IDS_TXT_POPUP_OPERATION_SUCCESSFUL"),
                           getLocalString("IDS_BTN_POPUP_OK"),
                           getLocalString("IDS_BTN_OPEN_FOLDER"), QString()}
            << dark << Qt::LeftToRight;
        QTest::addRow("conflict-%s", shade) << plain + conflict << dark << Qt::LeftToRight;
        QTest::addRow("hostile-%s", shade) << hostile + conflict << dark << Qt::LeftToRight;
        QTest::addRow("lines-%s", shade) << lines + conflict << dark << Qt::LeftToRight;
    }
    QTest::addRow("mirrored") << plain + conflict << false << Qt::RightToLeft;
}

void TestPopUpBoxesLooks::pictures() {
    QFETCH(QStringList, request);
    QFETCH(bool, dark);
    QFETCH(Qt::LayoutDirection, direction);

    const QPalette before = QApplication::palette();
    if (dark)
        QApplication::setPalette(darkPalette());
    QApplication::setLayoutDirection(direction);
    QDir folder(QCoreApplication::applicationDirPath());
    folder.mkpath(QStringLiteral("pictures"));
    const QString path = folder.filePath(
        QStringLiteral("pictures/box-%1.png").arg(QString::fromLatin1(QTest::currentDataTag())));
    onceBoxOpen([&](MessageBox& box) {
        const QImage picture = box.grab().toImage();
        QVERIFY(picture.save(path));
        QCOMPARE(picture.pixelColor(2, 2).lightnessF() < 0.5F, dark);
        press(box, 1000);
    });
    PopUpBoxes().PopUpMesgWithCheckBox(request);
    QApplication::setPalette(before);
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

REELSHIFT_TEST(tst_popupboxes_looks, TestPopUpBoxesLooks, QApplication)
#include "tst_popupboxes_looks.moc"

#include "TestProgram.h"
#include "platform/LocalizedStrings.h"
#include "platform/MainThreadCalls.h"
#include "widgets/BoxDriver.h"
#include "widgets/MessageText.h"
#include "widgets/PopUpBoxes.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLoggingCategory>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <memory>
#include <stdexcept>

namespace {

QString accessibleName(QWidget* widget) {
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

QAccessible::Role accessibleRole(QWidget* widget) {
    return QAccessible::queryAccessibleInterface(widget)->role();
}

QPalette darkPalette() {
    QPalette dark(QColor(0x2d, 0x2d, 0x30));
    dark.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::ButtonText, Qt::white);
    return dark;
}

/// Whether asking went without an answer.
bool isCancelled(const QStringList& request, QWidget* parent = nullptr) {
    try {
        PopUpBoxes(parent).PopUpMesg(request);
    } catch (const Cancelled&) {
        return true;
    }
    return false;
}

const QStringList stopOrSkip{QStringLiteral("Failed"), QStringLiteral("Stop"),
                             QStringLiteral("Skip")};

} // namespace

class tst_PopUpBoxes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void looksTheSameEveryTime();
    void answersThePressedButton_data();
    void answersThePressedButton();
    void keepsTheOrderOfTheRequest();
    void firstButtonIsTheDefault();
    void escapeAndClose_data();
    void escapeAndClose();
    void messageAloneGetsOneButton();
    void checkBox_data();
    void checkBox();
    void logsTheAnswer();
    void showsPlainText();
    void mnemonicsAnswer();
    void isReadable();
    void staysOnTheScreen_data();
    void staysOnTheScreen();
    void manyButtonsStandInAColumn();
    void quittingIsNoAnswer_data();
    void quittingIsNoAnswer();
    void dismissingIsNoAnswer();
    void parentDestroyedIsNoAnswer();
    void blocksTheWindowBelow();
    void emptyRequestIsOutOfRange();
    void pictures_data();
    void pictures();

private:
    std::unique_ptr<StringTable> texts_;
};

void tst_PopUpBoxes::initTestCase() {
    QLoggingCategory::setFilterRules(QStringLiteral("reelshift.widgets.debug=true"));
    texts_ = std::make_unique<StringTable>(QStringLiteral(REELSHIFT_TEST_RESOURCES),
                                           QLocale(QStringLiteral("en")));
    QVERIFY(texts_->isLoaded());
}

void tst_PopUpBoxes::cleanup() {
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_PopUpBoxes::looksTheSameEveryTime() {
    onceBoxOpen([](MessageBox& box) {
        QCOMPARE(box.windowTitle(), QStringLiteral("Quorvex Reelshift"));
        bool hasIcon = false;
        for (const auto* label : box.findChildren<QLabel*>())
            hasIcon = hasIcon || !label->pixmap(Qt::ReturnByValue).isNull();
        QVERIFY(hasIcon);
        QVERIFY(box.isModal());
        press(box, 1000);
    });
    PopUpBoxes().PopUpMesg(stopOrSkip);
}

void tst_PopUpBoxes::answersThePressedButton_data() {
    QTest::addColumn<QStringList>("buttons");
    QTest::addColumn<int>("code");

    const QStringList four{QStringLiteral("Cancel"), QStringLiteral("Duplicate"),
                           QStringLiteral("Skip"), QStringLiteral("Replace")};
    QTest::newRow("one button") << four.mid(0, 1) << 1000;
    QTest::newRow("first of two") << four.mid(0, 2) << 1000;
    QTest::newRow("second of two") << four.mid(0, 2) << 1001;
    QTest::newRow("third of four") << four << 1002;
    QTest::newRow("fourth of four") << four << 1003;
}

void tst_PopUpBoxes::answersThePressedButton() {
    QFETCH(QStringList, buttons);
    QFETCH(int, code);

    onceBoxOpen([&](MessageBox& box) {
        QCOMPARE(box.findChildren<QPushButton*>().size(), buttons.size());
        QTest::mouseClick(buttonsByPlace(box).at(code - 1000), Qt::LeftButton);
    });
    QCOMPARE(PopUpBoxes().PopUpMesg(QStringList(QStringLiteral("Which?")) + buttons), code);
}

void tst_PopUpBoxes::keepsTheOrderOfTheRequest() {
    // Roles would reorder these: Cancel and OK change places from desktop to desktop.
    const QStringList titles{QStringLiteral("Cancel"), QStringLiteral("OK"),
                             QStringLiteral("Apply"), QStringLiteral("Help")};
    onceBoxOpen([&](MessageBox& box) {
        QStringList shown;
        for (const auto* button : buttonsByPlace(box))
            shown << button->text();
        QCOMPARE(shown, titles);
        press(box, 1001);
    });
    PopUpBoxes().PopUpMesg(QStringList(QStringLiteral("Order")) + titles);
}

void tst_PopUpBoxes::firstButtonIsTheDefault() {
    onceBoxOpen([](MessageBox& box) {
        auto* const first = buttonsByPlace(box).first();
        QVERIFY(first->isDefault());
        QCOMPARE(box.focusWidget(), first);
        QTest::keyClick(box.focusWidget(), Qt::Key_Return);
    });
    QCOMPARE(PopUpBoxes().PopUpMesg(stopOrSkip), 1000);

    // Kept: where Cancel comes first, Enter cancels.
    onceBoxOpen([](MessageBox& box) { QTest::keyClick(&box, Qt::Key_Enter); });
    QCOMPARE(
        PopUpBoxes().PopUpMesg({QStringLiteral("Same name"), getLocalString("IDS_BTN_POPUP_CANCEL"),
                                getLocalString("IDS_BTN_POPUP_REPLACE")}),
        1000);
}

void tst_PopUpBoxes::escapeAndClose_data() {
    QTest::addColumn<QStringList>("buttons");
    QTest::addColumn<int>("code"); // 0: nothing happens

    const QString cancel = getLocalString("IDS_BTN_POPUP_CANCEL");
    const QString ok = getLocalString("IDS_BTN_POPUP_OK");
    QTest::newRow("Cancel first") << QStringList{cancel, ok} << 1000;
    QTest::newRow("Cancel last") << QStringList{ok, QStringLiteral("Skip"), cancel} << 1002;
    QTest::newRow("the only button") << QStringList{QStringLiteral("Try Again")} << 1000;
    QTest::newRow("no button") << QStringList{} << 1000;
    QTest::newRow("neither") << QStringList{QStringLiteral("Stop"), QStringLiteral("Skip")} << 0;
    QTest::newRow("another text with Cancel in it")
        << QStringList{ok, cancel + QStringLiteral(" all")} << 0;
}

void tst_PopUpBoxes::escapeAndClose() {
    QFETCH(QStringList, buttons);
    QFETCH(int, code);

    const std::function<void(MessageBox&)> ways[] = {
        [](MessageBox& box) { QTest::keyClick(box.focusWidget(), Qt::Key_Escape); },
        [](MessageBox& box) { box.close(); },
    };
    for (const auto& leave : ways) {
        onceBoxOpen([&](MessageBox& box) {
            leave(box);
            QCOMPARE(box.isVisible(), code == 0);
            if (code == 0)
                press(box, 1001);
        });
        QCOMPARE(PopUpBoxes().PopUpMesg(QStringList(QStringLiteral("Leave?")) + buttons),
                 code == 0 ? 1001 : code);
    }
}

void tst_PopUpBoxes::messageAloneGetsOneButton() {
    onceBoxOpen([](MessageBox& box) {
        const auto buttons = buttonsByPlace(box);
        QCOMPARE(buttons.size(), 1);
        QCOMPARE(buttons.first()->text(), getLocalString("IDS_BTN_POPUP_OK"));
        QVERIFY(buttons.first()->isDefault());
        QTest::keyClick(&box, Qt::Key_Return);
    });
    QCOMPARE(PopUpBoxes().PopUpMesg({QStringLiteral("Only this")}), 1000);
}

void tst_PopUpBoxes::checkBox_data() {
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("tick");
    QTest::addColumn<QStringList>("answer");

    const QString yes = QStringLiteral("1");
    const QString no = QStringLiteral("0");
    QTest::newRow("first") << 1000 << false << QStringList{QStringLiteral("1000"), no};
    QTest::newRow("second") << 1001 << false << QStringList{QStringLiteral("1001"), no};
    QTest::newRow("first, ticked") << 1000 << true << QStringList{QStringLiteral("1000"), yes};
    QTest::newRow("second, ticked") << 1001 << true << QStringList{QStringLiteral("1001"), yes};
}

void tst_PopUpBoxes::checkBox() {
    QFETCH(int, button);
    QFETCH(bool, tick);
    QFETCH(QStringList, answer);

    const QString title = QStringLiteral("Do this for all");
    onceBoxOpen([&](MessageBox& box) {
        QCOMPARE(box.findChildren<QPushButton*>().size(), 2);
        auto* const check = box.findChild<QCheckBox*>();
        QVERIFY(check);
        QCOMPARE(check->text(), title);
        QVERIFY(!check->isChecked());
        if (tick)
            QTest::keyClick(check, Qt::Key_Space);
        press(box, button);
    });
    QCOMPARE(PopUpBoxes().PopUpMesgWithCheckBox(stopOrSkip + QStringList(title)), answer);
}

void tst_PopUpBoxes::logsTheAnswer() {
    onceBoxOpen([](MessageBox& box) { press(box, 1001); });
    QTest::ignoreMessage(QtDebugMsg, "1001");
    PopUpBoxes().PopUpMesg(stopOrSkip);

    for (const bool tick : {false, true}) {
        onceBoxOpen([&](MessageBox& box) {
            box.findChild<QCheckBox*>()->setChecked(tick);
            press(box, 1000);
        });
        QTest::ignoreMessage(QtDebugMsg, "1000");
        QTest::ignoreMessage(QtDebugMsg, tick ? "Check box state is on" : "Check box state is off");
        PopUpBoxes().PopUpMesgWithCheckBox(stopOrSkip + QStringList(QStringLiteral("All")));
    }
}

void tst_PopUpBoxes::showsPlainText() {
    const QString message = QStringLiteral("<b>a</b> & <img src='x'>\n&Tom && Jerry.mp4");
    const QString button = QStringLiteral("<i>R</i>&B");
    const QString check = QStringLiteral("<u>For</u> all &of them");
    onceBoxOpen([&](MessageBox& box) {
        auto* const label = box.findChild<QLabel*>(QStringLiteral("popUpMessage"));
        QCOMPARE(label->text(), message);
        QCOMPARE(label->textFormat(), Qt::PlainText);
        QCOMPARE(accessibleName(label), message);
        const auto buttons = buttonsByPlace(box);
        QCOMPARE(accessibleName(buttons.first()), QStringLiteral("<i>R</i>B"));
        QCOMPARE(buttons.first()->shortcut(), QKeySequence(QStringLiteral("Alt+B")));
        auto* const checkBox = box.findChild<QCheckBox*>();
        QCOMPARE(accessibleName(checkBox), QStringLiteral("<u>For</u> all of them"));
        QCOMPARE(checkBox->shortcut(), QKeySequence(QStringLiteral("Alt+O")));
        press(box, 1001);
    });
    PopUpBoxes().PopUpMesgWithCheckBox({message, button, QStringLiteral("Other"), check});
}

void tst_PopUpBoxes::mnemonicsAnswer() {
    const QStringList request{QStringLiteral("A file called &Replace.mp4 && more"),
                              QStringLiteral("Ca&ncel"), QStringLiteral("&Replace"),
                              QStringLiteral("&Do the same")};
    onceBoxOpen([](MessageBox& box) {
        QVERIFY(QTest::qWaitForWindowActive(&box));
        auto* const tick = box.findChild<QCheckBox*>();
        QTest::keyClick(&box, Qt::Key_D, Qt::AltModifier);
        QTRY_VERIFY(tick->isChecked());
        QTest::keyClick(&box, Qt::Key_D, Qt::AltModifier);
        QTRY_VERIFY(!tick->isChecked());
        QTest::keyClick(&box, Qt::Key_D, Qt::AltModifier);
        QTRY_VERIFY(tick->isChecked());
        QTest::keyClick(&box, Qt::Key_R, Qt::AltModifier);
    });
    QCOMPARE(PopUpBoxes().PopUpMesgWithCheckBox(request),
             (QStringList{QStringLiteral("1001"), QStringLiteral("1")}));
}

void tst_PopUpBoxes::isReadable() {
    onceBoxOpen([](MessageBox& box) {
        QCOMPARE(accessibleRole(&box), QAccessible::Dialog);
        QCOMPARE(accessibleName(&box), stopOrSkip.first());
        auto* const label = box.findChild<QLabel*>(QStringLiteral("popUpMessage"));
        QCOMPARE(accessibleRole(label), QAccessible::StaticText);
        QCOMPARE(accessibleName(label), stopOrSkip.first());
        const auto buttons = buttonsByPlace(box);
        QCOMPARE(accessibleRole(buttons.last()), QAccessible::Button);
        QCOMPARE(accessibleName(buttons.last()), QStringLiteral("Skip"));
        QCOMPARE(accessibleRole(box.findChild<QCheckBox*>()), QAccessible::CheckBox);
        QCOMPARE(accessibleName(box.findChild<QCheckBox*>()), QStringLiteral("For all"));
        press(box, 1000);
    });
    PopUpBoxes().PopUpMesgWithCheckBox(stopOrSkip + QStringList(QStringLiteral("For all")));
}

void tst_PopUpBoxes::staysOnTheScreen_data() {
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

void tst_PopUpBoxes::staysOnTheScreen() {
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

void tst_PopUpBoxes::manyButtonsStandInAColumn() {
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

void tst_PopUpBoxes::quittingIsNoAnswer_data() {
    QTest::addColumn<bool>("hasCancel");
    QTest::addColumn<bool>("hasWindow");
    QTest::addColumn<bool>("byExit");

    for (const bool cancel : {false, true}) {
        for (const bool window : {false, true}) {
            for (const bool exit : {false, true})
                QTest::addRow("%s, %s, %s", cancel ? "with Cancel" : "without Cancel",
                              window ? "over a window" : "alone", exit ? "exit" : "quit")
                    << cancel << window << exit;
        }
    }
}

void tst_PopUpBoxes::quittingIsNoAnswer() {
    QFETCH(bool, hasCancel);
    QFETCH(bool, hasWindow);
    QFETCH(bool, byExit);

    QWidget window;
    if (hasWindow)
        window.show();
    QStringList request = stopOrSkip;
    if (hasCancel)
        request << getLocalString("IDS_BTN_POPUP_CANCEL");
    bool cancelled = false;
    QTimer::singleShot(0, qApp, [&] { cancelled = isCancelled(request, &window); });
    onceBoxOpen([&](MessageBox&) {
        if (byExit)
            QCoreApplication::exit();
        else
            QCoreApplication::quit();
    });
    QCoreApplication::exec();
    QVERIFY(cancelled);
}

void tst_PopUpBoxes::dismissingIsNoAnswer() {
    bool outer = false;
    bool inner = false;
    onceBoxOpen([&](MessageBox& box) {
        onceBoxOpen([](MessageBox&) { PopUpBoxes::dismissAll(); }, &box);
        inner = isCancelled({QStringLiteral("Inner"), QStringLiteral("OK")});
    });
    outer = isCancelled(stopOrSkip);
    QVERIFY(inner);
    QVERIFY(outer);
    // Later boxes are asked as ever.
    onceBoxOpen([](MessageBox& box) { press(box, 1001); });
    QCOMPARE(PopUpBoxes().PopUpMesg(stopOrSkip), 1001);
}

void tst_PopUpBoxes::parentDestroyedIsNoAnswer() {
    auto window = std::make_unique<QWidget>();
    window->show();
    onceBoxOpen([&](MessageBox&) { window.reset(); });
    QVERIFY(isCancelled(stopOrSkip, window.get()));
}

void tst_PopUpBoxes::blocksTheWindowBelow() {
    QWidget window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    onceBoxOpen([&](MessageBox& box) {
        QCOMPARE(box.parentWidget(), &window);
        QCOMPARE(box.windowHandle()->transientParent(), window.windowHandle());
        onceBoxOpen(
            [&](MessageBox& inner) {
                QCOMPARE(inner.parentWidget(), &box);
                press(inner, 1000);
            },
            &box);
        PopUpBoxes(&window).PopUpMesg({QStringLiteral("Inner")});
        press(box, 1000);
    });
    PopUpBoxes(&window).PopUpMesg(stopOrSkip);
}

void tst_PopUpBoxes::emptyRequestIsOutOfRange() {
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, PopUpBoxes().PopUpMesg({}));
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, PopUpBoxes().PopUpMesgWithCheckBox({}));
    QVERIFY_THROWS_EXCEPTION(std::out_of_range,
                             PopUpBoxes().PopUpMesgWithCheckBox({QStringLiteral("All")}));
}

void tst_PopUpBoxes::pictures_data() {
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

void tst_PopUpBoxes::pictures() {
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

REELSHIFT_TEST(tst_popupboxes, tst_PopUpBoxes, QApplication)
#include "tst_popupboxes.moc"

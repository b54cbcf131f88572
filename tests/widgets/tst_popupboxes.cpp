#include "TestProgram.h"
#include "platform/LocalizedStrings.h"
#include "platform/MainThreadCalls.h"
#include "widgets/BoxDriver.h"
#include "widgets/PopUpBoxes.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLoggingCategory>
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
    void quittingIsNoAnswer_data();
    void quittingIsNoAnswer();
    void dismissingIsNoAnswer();
    void parentDestroyedIsNoAnswer();
    void blocksTheWindowBelow();
    void emptyRequestIsOutOfRange();

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

REELSHIFT_TEST(tst_popupboxes, tst_PopUpBoxes, QApplication)
#include "tst_popupboxes.moc"

#include "TestProgram.h"
#include "platform/MainThread.h"
#include "widgets/ActionGate.h"
#include "widgets/BoxDriver.h"
#include "widgets/PopUpBoxes.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QTest>
#include <QTimer>

#include <stdexcept>

using namespace std::chrono_literals;

class tst_ActionGate : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void runsAtOnce();
    void disabledActionDoesNothing();
    void putOffInAWait();
    void lookedAtAfresh_data();
    void lookedAtAfresh();
    void keepsTheOrder();
    void waitsOfAPutOffAction();
    void nothingUnderAnOpenBox();
    void nothingUnderABoxThatOpenedMeanwhile();
    void nothingOnceClosing();
    void putOffIsDroppedByClosing();
    void whatIsThrownIsLogged_data();
    void whatIsThrownIsLogged();
    void putOffActionThatThrows();
};

void tst_ActionGate::initTestCase() {
    QLoggingCategory::setFilterRules(QStringLiteral("reelshift.widgets.debug=true"));
}

void tst_ActionGate::runsAtOnce() {
    MainThread mainThread;
    ActionGate gate(mainThread);
    int ran = 0;
    QVERIFY(gate.isOpen());
    gate.pass([&] { ++ran; });
    gate.pass([&] { ++ran; }, [] { return true; });
    QCOMPARE(ran, 2);
}

void tst_ActionGate::disabledActionDoesNothing() {
    MainThread mainThread;
    ActionGate gate(mainThread);
    int ran = 0;
    gate.pass([&] { ++ran; }, [] { return false; });
    QCOMPARE(ran, 0);
}

void tst_ActionGate::putOffInAWait() {
    MainThread mainThread;
    ActionGate gate(mainThread);
    int ran = 0;
    QTimer::singleShot(0, &gate, [&] {
        QVERIFY(!gate.isOpen());
        gate.pass([&] {
            ++ran;
            QVERIFY(!mainThread.isWaiting());
        });
    });
    mainThread.waitFor(20ms);
    // The action that waited comes to its own end first.
    QCOMPARE(ran, 0);
    QTRY_COMPARE(ran, 1);
}

void tst_ActionGate::lookedAtAfresh_data() {
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("after");

    QTest::newRow("still enabled") << true << true;
    QTest::newRow("disabled meanwhile") << true << false;
    QTest::newRow("enabled meanwhile") << false << true;
    QTest::newRow("disabled all the time") << false << false;
}

void tst_ActionGate::lookedAtAfresh() {
    QFETCH(bool, before);
    QFETCH(bool, after);

    MainThread mainThread;
    ActionGate gate(mainThread);
    bool enabled = before;
    bool ran = false;
    bool last = false;
    QTimer::singleShot(0, &gate, [&] {
        gate.pass([&] { ran = true; }, [&] { return enabled; });
        gate.pass([&] { last = true; });
    });
    mainThread.waitFor(10ms);
    enabled = after;
    QTRY_VERIFY(last);
    QCOMPARE(ran, after);
}

void tst_ActionGate::keepsTheOrder() {
    MainThread mainThread;
    ActionGate gate(mainThread);
    QList<int> order;
    QTimer::singleShot(0, &gate, [&] {
        for (int number = 1; number <= 3; ++number)
            gate.pass([&, number] { order << number; });
    });
    mainThread.waitFor(10ms);
    QTRY_COMPARE(order, QList<int>({1, 2, 3}));
}

void tst_ActionGate::waitsOfAPutOffAction() {
    MainThread mainThread;
    ActionGate gate(mainThread);
    QStringList order;
    QTimer::singleShot(0, &gate, [&] {
        gate.pass([&] {
            order << QStringLiteral("first begins");
            QTimer::singleShot(0, &gate,
                               [&] { gate.pass([&] { order << QStringLiteral("third"); }); });
            mainThread.waitFor(10ms);
            order << QStringLiteral("first ends");
        });
        gate.pass([&] { order << QStringLiteral("second"); });
    });
    mainThread.waitFor(10ms);
    QTRY_COMPARE(order, QStringList({QStringLiteral("first begins"), QStringLiteral("first ends"),
                                     QStringLiteral("second"), QStringLiteral("third")}));
}

void tst_ActionGate::nothingUnderAnOpenBox() {
    MainThread mainThread;
    ActionGate gate(mainThread);
    int ran = 0;
    onceBoxOpen([&](MessageBox& box) {
        QVERIFY(!gate.isOpen());
        gate.pass([&] { ++ran; });
        press(box, 1000);
    });
    PopUpBoxes().PopUpMesg({QStringLiteral("Open")});
    // Not put off either.
    QVERIFY(gate.isOpen());
    QCoreApplication::processEvents();
    QCOMPARE(ran, 0);
}

void tst_ActionGate::nothingUnderABoxThatOpenedMeanwhile() {
    MainThread mainThread;
    ActionGate gate(mainThread);
    int ran = 0;
    QTimer::singleShot(0, &gate, [&] { gate.pass([&] { ++ran; }); });
    mainThread.waitFor(10ms);
    onceBoxOpen([&](MessageBox& box) {
        QCoreApplication::processEvents();
        press(box, 1000);
    });
    PopUpBoxes().PopUpMesg({QStringLiteral("Opened by the action that waited")});
    QCoreApplication::processEvents();
    QCOMPARE(ran, 0);
}

void tst_ActionGate::nothingOnceClosing() {
    MainThread mainThread;
    ActionGate gate(mainThread);
    mainThread.close();
    int ran = 0;
    QVERIFY(!gate.isOpen());
    gate.pass([&] { ++ran; });
    QCOMPARE(ran, 0);
}

void tst_ActionGate::putOffIsDroppedByClosing() {
    MainThread mainThread;
    ActionGate gate(mainThread);
    int ran = 0;
    QTimer::singleShot(0, &gate, [&] {
        gate.pass([&] { ++ran; });
        mainThread.close();
    });
    QVERIFY(!runGuarded([&] { mainThread.waitFor(1h); }));
    QCoreApplication::processEvents();
    QCOMPARE(ran, 0);
}

void tst_ActionGate::whatIsThrownIsLogged_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("failure") << 0 << int(QtWarningMsg)
                             << QByteArray("an action ended early: row 7");
    QTest::newRow("closing") << 1 << int(QtDebugMsg)
                             << QByteArray("an action was cut short: the program closes");
    QTest::newRow("anything else") << 2 << int(QtWarningMsg) << QByteArray("an action ended early");
}

void tst_ActionGate::whatIsThrownIsLogged() {
    QFETCH(int, kind);
    QFETCH(int, type);
    QFETCH(QByteArray, line);

    MainThread mainThread;
    ActionGate gate(mainThread);
    QTest::ignoreMessage(static_cast<QtMsgType>(type), line.constData());
    gate.pass([&] {
        if (kind == 0)
            throw std::out_of_range("row 7");
        if (kind == 1)
            throw Cancelled();
        throw kind;
    });
    QVERIFY(runGuarded([] {}));
}

void tst_ActionGate::putOffActionThatThrows() {
    MainThread mainThread;
    ActionGate gate(mainThread);
    bool next = false;
    QTimer::singleShot(0, &gate, [&] {
        gate.pass([] { throw std::out_of_range("row 7"); });
        gate.pass([&] { next = true; });
    });
    QTest::ignoreMessage(QtWarningMsg, "an action ended early: row 7");
    mainThread.waitFor(10ms);
    QTRY_VERIFY(next);
}

REELSHIFT_TEST(tst_actiongate, tst_ActionGate, QApplication)
#include "tst_actiongate.moc"

#include "platform/MainThread.h"

#include <QProcess>
#include <QTest>
#include <QTimer>
#include <QWindow>

using namespace std::chrono_literals;

namespace {

class CountingWindow final : public QWindow {
public:
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent*) override { ++presses; }
};

} // namespace

class tst_UserInput : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void clickOutsideAWait();
    void clickInsideAWaitIsLeftForLater();

private:
    CountingWindow window_;
    QProcess clicker_;
};

void tst_UserInput::initTestCase() {
    clicker_.setProgram(QStringLiteral(XDOTOOL));
    clicker_.setArguments({QStringLiteral("mousemove"), QStringLiteral("100"),
                           QStringLiteral("100"), QStringLiteral("click"), QStringLiteral("1")});
    window_.setGeometry(0, 0, 400, 400);
    window_.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window_));
}

void tst_UserInput::clickOutsideAWait() {
    clicker_.start();
    QTRY_COMPARE(window_.presses, 1);
    QVERIFY(clicker_.waitForFinished());
}

void tst_UserInput::clickInsideAWaitIsLeftForLater() {
    MainThread mainThread;
    window_.presses = 0;
    bool clicked = false;
    connect(&clicker_, &QProcess::finished, &mainThread, [&] {
        clicked = true;
        mainThread.wake();
    });
    clicker_.start();
    mainThread.waitUntil([&] { return clicked; });
    // The click is on its way by now, if it has not come.
    mainThread.waitFor(200ms);
    QCOMPARE(window_.presses, 0);
    QTRY_COMPARE(window_.presses, 1);
}

QTEST_MAIN(tst_UserInput)
#include "tst_userinput.moc"

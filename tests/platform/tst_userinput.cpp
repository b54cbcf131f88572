#include "TestProgram.h"
#include "platform/MainThread.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QProcess>
#include <QTest>
#include <QTimer>
#include <QWindow>

using namespace std::chrono_literals;

namespace {

class CountingWindow final : public QWindow {
public:
    int presses = 0;
    QString order;

protected:
    void mousePressEvent(QMouseEvent*) override {
        ++presses;
        order += u'p';
    }
    void mouseReleaseEvent(QMouseEvent*) override { order += u'r'; }
    void keyPressEvent(QKeyEvent* event) override { order += event->text(); }
};

} // namespace

class tst_UserInput : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void clickOutsideAWait();
    void clickInsideAWaitIsLeftForLater();
    void clicksStayInTheirOrder();
    void clickUnderALoopThatOpensInAWait();

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

void tst_UserInput::clicksStayInTheirOrder() {
    MainThread mainThread;
    QProcess typist;
    typist.setProgram(clicker_.program());
    window_.requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(&window_));
    window_.order.clear();
    connect(&typist, &QProcess::finished, &mainThread, &MainThread::wake);
    const auto isOver = [&] { return typist.state() == QProcess::NotRunning; };
    for (const char* const what : {"mousemove 100 100 click 1", "key a", "click 1", "key b"}) {
        mainThread.waitUntil(isOver);
        typist.setArguments(QString::fromLatin1(what).split(u' '));
        typist.start();
    }
    mainThread.waitUntil(isOver);
    mainThread.waitFor(200ms);
    QCOMPARE(window_.order, QString());
    QTRY_COMPARE(window_.order, QStringLiteral("praprb"));
}

// A question in a wait is answered at once.
void tst_UserInput::clickUnderALoopThatOpensInAWait() {
    MainThread mainThread;
    window_.presses = 0;
    bool answered = false;
    QTimer::singleShot(0, &mainThread, [&] {
        QEventLoop box;
        QTimer watch;
        connect(&watch, &QTimer::timeout, &box, [&] {
            answered = window_.presses == 1;
            if (answered)
                box.quit();
        });
        watch.start(1);
        QTimer::singleShot(20000, &box, &QEventLoop::quit);
        clicker_.start();
        box.exec();
    });
    mainThread.waitUntil([&] { return answered; }, 1ms);
    QVERIFY(answered);
    QVERIFY(clicker_.waitForFinished());
}

REELSHIFT_TEST(tst_userinput, tst_UserInput, QGuiApplication)
#include "tst_userinput.moc"

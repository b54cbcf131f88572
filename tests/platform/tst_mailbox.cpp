#include "TestProgram.h"
#include "platform/Mailbox.h"

#include <QCoreApplication>
#include <QTest>
#include <QThread>

#include <thread>

/// Answers of threads, some of which come too late.
class TestMailbox final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void deliversOnTheOwnersThread();
    void deliversInOrder();
    void nothingIsDeliveredInsideThePost();
    void nothingIsDeliveredOnceClosed();
    void whatWasPostedBeforeTheCloseIsNotDelivered();
    void aDeliveryMayClose();
    void outlivesItsOwner();
};

namespace {

struct MailboxOwner final : QObject {
    std::shared_ptr<Mailbox<MailboxOwner>> mailbox = Mailbox<MailboxOwner>::make(*this);
    QList<int> got;

    ~MailboxOwner() override { mailbox->close(); }
    void post(int number) {
        mailbox->post([number](MailboxOwner& self) { self.got += number; });
    }
};

void turnTheLoop() {
    QCoreApplication::sendPostedEvents();
}

} // namespace

void TestMailbox::deliversOnTheOwnersThread() {
    MailboxOwner owner;
    QThread* thread = nullptr;
    std::thread([&, mailbox = owner.mailbox] {
        mailbox->post([&](MailboxOwner&) { thread = QThread::currentThread(); });
    }).join();
    turnTheLoop();
    QCOMPARE(thread, QThread::currentThread());
}

void TestMailbox::deliversInOrder() {
    MailboxOwner owner;
    for (const int number : {1, 2, 3})
        owner.post(number);
    turnTheLoop();
    QCOMPARE(owner.got, (QList<int>{1, 2, 3}));
}

void TestMailbox::nothingIsDeliveredInsideThePost() {
    MailboxOwner owner;
    owner.post(1);
    QVERIFY(owner.got.isEmpty());
}

void TestMailbox::nothingIsDeliveredOnceClosed() {
    MailboxOwner owner;
    owner.mailbox->close();
    owner.post(1);
    turnTheLoop();
    QVERIFY(owner.got.isEmpty());
}

// The owner lives, but wants no more answers.
void TestMailbox::whatWasPostedBeforeTheCloseIsNotDelivered() {
    MailboxOwner owner;
    owner.post(1);
    owner.mailbox->close();
    turnTheLoop();
    QVERIFY(owner.got.isEmpty());
}

void TestMailbox::aDeliveryMayClose() {
    MailboxOwner owner;
    owner.mailbox->post([](MailboxOwner& self) {
        self.got += 1;
        self.mailbox->close();
    });
    owner.post(2);
    turnTheLoop();
    QCOMPARE(owner.got, QList<int>{1});
}

void TestMailbox::outlivesItsOwner() {
    auto owner = std::make_unique<MailboxOwner>();
    const auto mailbox = owner->mailbox;
    bool isDelivered = false;
    const auto note = [&isDelivered](MailboxOwner&) { isDelivered = true; };
    mailbox->post(note);
    owner.reset();
    std::thread([&] { mailbox->post(note); }).join();
    turnTheLoop();
    QVERIFY(!isDelivered);
}

REELSHIFT_TEST(tst_mailbox, TestMailbox, QCoreApplication)
#include "tst_mailbox.moc"

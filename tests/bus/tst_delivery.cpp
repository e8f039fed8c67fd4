// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// What client and service learn of a message that the library sends for them.

#include "bustesting.h"
#include "scriptedmodem.h"
#include "storetesting.h"

#include <shared/delivery.h>

#include <QtCore/QLoggingCategory>

#include <algorithm>
#include <memory>

using StoreTesting::Patience;

namespace {

constexpr int Outbox = 4099;

KorvaSyncIf::SmsInfo message(const QString &text)
{
    KorvaSyncIf::SmsInfo message;
    message.parentId = KorvaSyncIf::LocSent;
    message.toNumber = QStringLiteral("+15550100");
    message.readStatus = QStringLiteral("READ");
    message.time = QDateTime::currentDateTimeUtc();
    message.body = text;
    return message;
}

bool holds(int folder, const QString &text)
{
    const QList<CommHistory::Event> events = StoreTesting::read(folder);
    return std::any_of(events.cbegin(), events.cend(),
                       [&](const CommHistory::Event &event) { return event.freeText() == text; });
}

bool waitForEnd(const Delivery &delivery)
{
    return QTest::qWaitFor([&] { return !delivery.isUnderWay(); }, Patience);
}

} // namespace

class TestDelivery : public QObject
{
    Q_OBJECT
public:
    explicit TestDelivery(const PrivateBus &systemBus)
        : systemBus(systemBus)
    {
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(StoreTesting::makeStore()); }
    void init();
    void cleanup();
    void tellsTheReasonBeforeTheStoreHasTheMessage();
    void tellsTheReasonWhateverTheLogLeavesOut();
    void tellsNotTheReasonOfAnother();
    void endsWhenTheMessageIsStored();
    void answersAnErrorAtOnceAndLater();

private:
    void refuse();

    const PrivateBus &systemBus;
    std::unique_ptr<ScriptedModem> modem;
};

void TestDelivery::init() { modem = std::make_unique<ScriptedModem>(systemBus.address()); }

void TestDelivery::cleanup()
{
    modem.reset();
    QLoggingCategory::setFilterRules(QString());
}

//! All that is to be sent from now on.
void TestDelivery::refuse()
{
    connect(modem.get(), &ScriptedModem::asked, modem.get(), [this] {
        modem->refuse(QStringLiteral("org.freedesktop.ModemManager1.Error.Message.NetworkTimeout"),
                      QStringLiteral("no network"));
    });
}

void TestDelivery::tellsTheReasonBeforeTheStoreHasTheMessage()
{
    const QString text = QStringLiteral("Before");
    refuse();
    const Delivery delivery(message(text));
    QString problem;
    connect(&delivery, &Delivery::answered, this, [&] { problem = delivery.problem(); });
    QVERIFY(QTest::qWaitFor([&] { return holds(Outbox, text) || !problem.isEmpty(); }, Patience));
    QCOMPARE(delivery.problem(), QStringLiteral("The message was refused: no network"));
    QVERIFY(waitForEnd(delivery));
    QTRY_COMPARE_WITH_TIMEOUT(problem, QStringLiteral("The message was refused: no network"),
                              Patience);
}

void TestDelivery::tellsTheReasonWhateverTheLogLeavesOut()
{
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    refuse();
    const Delivery delivery(message(QStringLiteral("Without a log")));
    QVERIFY(waitForEnd(delivery));
    QCOMPARE(delivery.problem(), QStringLiteral("The message was refused: no network"));
}

void TestDelivery::tellsNotTheReasonOfAnother()
{
    const Delivery waiting(message(QStringLiteral("Waiting")));
    QTRY_COMPARE_WITH_TIMEOUT(modem->messages().size(), 1, Patience);
    const Delivery undialled([] {
        KorvaSyncIf::SmsInfo toAWord = message(QStringLiteral("To a word"));
        toAWord.toNumber = QStringLiteral("InfoPost");
        return toAWord;
    }());
    QVERIFY(waitForEnd(undialled));
    QCOMPARE(undialled.problem(), QStringLiteral("The number cannot be dialled."));
    QVERIFY(waiting.isUnderWay());
    modem->accept();
    QVERIFY(waitForEnd(waiting));
    QCOMPARE(waiting.problem(), QString());
}

void TestDelivery::endsWhenTheMessageIsStored()
{
    const QString text = QStringLiteral("Stored");
    const Delivery delivery(message(text));
    QSignalSpy answered(&delivery, &Delivery::answered);
    QSignalSpy ended(&delivery, &Delivery::ended);
    QVERIFY(delivery.isUnderWay());
    QVERIFY(!delivery.isAnswered());
    QTRY_COMPARE_WITH_TIMEOUT(modem->messages().size(), 1, Patience);
    QVERIFY(delivery.isUnderWay());
    modem->accept();
    QVERIFY(waitForEnd(delivery));
    QVERIFY(holds(StoreTesting::Sent, text));
    QVERIFY(!answered.isEmpty() || answered.wait(Patience));
    QCOMPARE(answered.size(), 1);
    QCOMPARE(ended.size(), 1);
    QVERIFY(delivery.isAnswered());
    QVERIFY(delivery.id() > 0);
    QCOMPARE(delivery.errorCause(), 0);
    QCOMPARE(delivery.problem(), QString());
}

void TestDelivery::answersAnErrorAtOnceAndLater()
{
    const Delivery delivery(message(QString()));
    QSignalSpy answered(&delivery, &Delivery::answered);
    QCOMPARE(delivery.errorCause(), 2);
    QVERIFY(!delivery.isAnswered());
    QVERIFY(!delivery.isUnderWay());
    QVERIFY(answered.wait(Patience));
    QVERIFY(delivery.isAnswered());
    QCOMPARE(delivery.errorCause(), 2);
    QCOMPARE(delivery.id(), -1);
    QCOMPARE(modem->messages().size(), 0);
}

int main(int argc, char *argv[])
{
    const QTemporaryDir directory;
    qputenv("KORVASYNC_STORE", QFile::encodeName(directory.filePath(QStringLiteral("store"))));
    const PrivateBus systemBus("DBUS_SYSTEM_BUS_ADDRESS");
    const PrivateBus sessionBus("DBUS_SESSION_BUS_ADDRESS");
    QCoreApplication application(argc, argv);
    TestDelivery test(systemBus);
    return QTest::qExec(&test, argc, argv);
}
#include "tst_delivery.moc"

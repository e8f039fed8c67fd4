// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// What a sender does with a vMessage at once: the causes, what the messaging library gets, the
// trace, its place on the bus, and what belongs to whom.

#include "sendtesting.h"

#include <messaging/messagingif.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QPointer>
#include <QtDBus/QDBusAbstractAdaptor>
#include <QtDBus/QDBusMetaType>
#include <QtDBus/QDBusPendingCallWatcher>

using namespace SendTesting;
using CommHistory::Event;

namespace {

const QString Hello = QStringLiteral("Hello");
const QString Path = QStringLiteral("/SendSmsInterface");

QString withoutBody(const QString &number)
{
    QString text = vMessage(Hello, number);
    const auto begin = text.indexOf(QStringLiteral("BEGIN:VBODY"));
    const auto end = text.indexOf(QStringLiteral("END:VENV"));
    return text.remove(begin, end - begin);
}

QString withoutRecipient(const QString &text)
{
    VMessageText message;
    message.originator = QString();
    message.body = text;
    return message.text();
}

const QString Unreadable = QStringLiteral("BEGIN:VMSG\r\nno message");

QStringList lines(std::initializer_list<const char *> texts)
{
    QStringList result;
    for (const char *const text : texts)
        result.append(QString::fromLatin1(text));
    return result;
}

//! The class's own methods, such as "private slot timeOut()".
QStringList ownMethods(const QMetaObject &type)
{
    QStringList result;
    for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
        const QMetaMethod method = type.method(i);
        result.append(QStringLiteral("%1 %2 %3 %4")
                          .arg(method.access() == QMetaMethod::Private ? QStringLiteral("private")
                                                                       : QStringLiteral("other"),
                               method.methodType() == QMetaMethod::Signal ? QStringLiteral("signal")
                                                                          : QStringLiteral("slot"),
                               QString::fromLatin1(method.methodSignature()),
                               QString::fromLatin1(method.parameterNames().join(',')))
                          .trimmed());
    }
    return result;
}

//! The name under which the type travels over the bus; empty when it is not registered.
template <typename T>
QByteArray busSignature()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QDBusMetaType::typeToSignature(QMetaType::fromType<T>());
#else
    return QDBusMetaType::typeToSignature(qMetaTypeId<T>());
#endif
}

} // namespace

//! What a program may give a sender to be called by.
class GreetingAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.example.Greeting")
public:
    explicit GreetingAdaptor(QObject *parent)
        : QDBusAbstractAdaptor(parent)
    {
    }

public Q_SLOTS:
    QString greet() { return Hello; }
};

class TestHandingOver : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aFreshSenderTellsTheCause_data();
    void aFreshSenderTellsTheCause();
    void aLaterFailureIsTold_data();
    void aLaterFailureIsTold();
    void whatIsMissingStaysFromTheMessageBefore();
    void aRefusedMessageKeepsTheSubscriptionAndStartsNoTimer();
    void asManyBytesAreReadAsThereAreUnits_data();
    void asManyBytesAreReadAsThereAreUnits();
    void theMessagingLibraryGetsNumberAndText();
    void aByteOrderMarkIsDroppedAsQtDropsIt();
    void theMessagingObjectIsMadeByTheFirstSend();
    void theMessagingResultIsLoggedAlone_data();
    void theMessagingResultIsLoggedAlone();
    void theMessagingResultIsQueued();
    void tracesASuccess();
    void tracesATimeOut();
    void tracesItsLife();
    void senderHasItsSlotsInOrder();
    void pendingSmsIdHasItsSignal();
    void announcedTypesAreRegistered();
    void standsOnTheBusAndExportsAdaptors();
    void aSecondSenderIsNotRegistered();
    void pendingObjectsBelongToTheSender();
    void doneEmitsFinished();
};

void TestHandingOver::aFreshSenderTellsTheCause_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("cause");
    QTest::newRow("no-body") << withoutBody(Number) << 2;
    QTest::newRow("empty-text") << vMessage(QString()) << 2;
    QTest::newRow("no-recipient") << withoutRecipient(Hello) << 3;
    QTest::newRow("neither") << withoutRecipient(QString()) << 2;
    QTest::newRow("unreadable") << Unreadable << 2;
    QTest::newRow("empty") << QString() << 2;
}

void TestHandingOver::aFreshSenderTellsTheCause()
{
    QFETCH(QString, text);
    QFETCH(int, cause);
    Sender sender;
    PendingSmsId *const pending = sender.send(text);
    QVERIFY(pending);
    QCOMPARE(pending->errorCause(), cause);
    QCOMPARE(pending->isError(), true);
    QCOMPARE(pending->id(), -1);
    settle();
    QVERIFY(sender.finished.isEmpty());
    QVERIFY(sender.messaging.names.isEmpty());
    QVERIFY(sender.messaging.messages.isEmpty());
}

void TestHandingOver::aLaterFailureIsTold_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("cause");
    QTest::newRow("unreadable") << vMessage(Hello) << Unreadable << 1;
    QTest::newRow("empty") << vMessage(Hello) << QString() << 1;
    QTest::newRow("empty-text") << vMessage(Hello) << vMessage(QString()) << 2;
    QTest::newRow("unreadable-and-no-number-yet") << withoutRecipient(Hello) << Unreadable << 3;
    QTest::newRow("unreadable-and-no-text-yet") << withoutBody(Number) << Unreadable << 2;
}

void TestHandingOver::aLaterFailureIsTold()
{
    QFETCH(QString, before);
    QFETCH(QString, text);
    QFETCH(int, cause);
    Sender sender;
    sender.send(before);
    const auto sent = sender.messaging.messages.size();
    PendingSmsId *const pending = sender.send(text);
    QCOMPARE(pending->errorCause(), cause);
    QCOMPARE(sender.messaging.messages.size(), sent);
}

void TestHandingOver::whatIsMissingStaysFromTheMessageBefore()
{
    Sender sender;
    sender.send(vMessage(Hello));
    QCOMPARE(sender.send(withoutRecipient(QStringLiteral("Bye")))->errorCause(), 0);
    QCOMPARE(sender.send(withoutBody(QStringLiteral("+15550101")))->errorCause(), 0);
    QCOMPARE(int(sender.messaging.messages.size()), 3);
    QCOMPARE(sender.messaging.messages.at(1).number, Number);
    QCOMPARE(sender.messaging.messages.at(1).text, QStringLiteral("Bye"));
    QCOMPARE(sender.messaging.messages.at(2).number, QStringLiteral("+15550101"));
    QCOMPARE(sender.messaging.messages.at(2).text, QStringLiteral("Bye"));
}

void TestHandingOver::aRefusedMessageKeepsTheSubscriptionAndStartsNoTimer()
{
    Sender sender;
    PendingSmsId *const refused = sender.send(withoutRecipient(Hello));
    QCOMPARE(refused->errorCause(), 3);
    sender.history.announce({sentEvent(42, QStringLiteral("Other"))});
    QVERIFY(sender.log.lines(QtDebugMsg).contains(QStringLiteral("\"Other\"")));
    // A timer of the first send would fire before the one of the second.
    PendingSmsId *const sent = sender.send(vMessage(Hello));
    QSignalSpy finished(sent, &PendingSmsId::finished);
    QVERIFY(finished.wait(Patience));
    QCOMPARE(sender.log.linesFrom(QtDebugMsg, QStringLiteral("Events Added Disconnected")),
             lines({"Events Added Disconnected true"}));
    QCOMPARE(sender.finished, QList<PendingSmsId *>{sent});
}

void TestHandingOver::asManyBytesAreReadAsThereAreUnits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("appended");
    QTest::addColumn<bool>("isWhole");
    const QString umlauts(100, QChar(0xfc));
    const QString emoji = QStringLiteral("\U0001F600").repeated(50);
    QTest::newRow("ascii") << QString(100, QLatin1Char('u')) << 0 << true;
    QTest::newRow("umlauts") << umlauts << 0 << false;
    QTest::newRow("umlauts-lengthened") << umlauts << 100 << true;
    QTest::newRow("emoji") << emoji << 0 << false;
    QTest::newRow("emoji-lengthened") << emoji << 100 << true;
}

void TestHandingOver::asManyBytesAreReadAsThereAreUnits()
{
    QFETCH(QString, text);
    QFETCH(int, appended);
    QFETCH(bool, isWhole);
    Sender sender;
    PendingSmsId *const pending =
        sender.send(vMessage(text) + QString(appended, QLatin1Char('\n')));
    QCOMPARE(pending->errorCause(), isWhole ? 0 : 2);
    QCOMPARE(int(sender.messaging.messages.size()), isWhole ? 1 : 0);
    if (isWhole)
        QCOMPARE(sender.messaging.messages.at(0).text, text);
}

void TestHandingOver::theMessagingLibraryGetsNumberAndText()
{
    Sender sender;
    const QString number = QStringLiteral("+1 (555) 01-00");
    PendingSmsId *const pending = sender.send(vMessage(Hello, number));
    QCOMPARE(int(sender.messaging.messages.size()), 1);
    QCOMPARE(sender.messaging.messages.at(0).number, number);
    QCOMPARE(sender.messaging.messages.at(0).text, Hello);
    QCOMPARE(sender.messaging.messages.at(0).keepInHistory, true);
    sender.history.announce({sentEvent(42, Hello, number)});
    QCOMPARE(pending->id(), 42);
}

//! And so the stored message is the one that was sent.
void TestHandingOver::aByteOrderMarkIsDroppedAsQtDropsIt()
{
    Sender sender;
    PendingSmsId *const pending =
        sender.send(vMessage(QStringLiteral("\uFEFFHe\uFEFFllo")) + QStringLiteral("\n\n\n\n"));
    QCOMPARE(int(sender.messaging.messages.size()), 1);
    QCOMPARE(sender.messaging.messages.at(0).text, QStringLiteral("He\uFEFFllo"));
    sender.history.announce({sentEvent(42, QStringLiteral("He\uFEFFllo"))});
    QCOMPARE(pending->id(), 42);
}

void TestHandingOver::theMessagingObjectIsMadeByTheFirstSend()
{
    Sender sender;
    QVERIFY(sender.messaging.names.isEmpty());
    sender.send(vMessage(Hello));
    sender.send(vMessage(Hello));
    QCOMPARE(sender.messaging.names, QStringList{QString()});
    QCOMPARE(
        sender.service.findChildren<MessagingIf *>(QString(), Qt::FindDirectChildrenOnly).size(),
        1);
    QCOMPARE(int(sender.messaging.messages.size()), 2);
}

void TestHandingOver::theMessagingResultIsLoggedAlone_data()
{
    QTest::addColumn<bool>("isRefused");
    QTest::newRow("accepted") << false;
    QTest::newRow("refused") << true;
}

void TestHandingOver::theMessagingResultIsLoggedAlone()
{
    QFETCH(bool, isRefused);
    Sender sender;
    if (isRefused)
        sender.messaging.outcome = ScriptedMessaging::Outcome::Refused;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    sender.log.clear();
    settle();
    QStringList debug{QStringLiteral("void SendSmsInterface::msgSent(const PendingMessage*)")};
    if (!isRefused)
        debug.append(QStringLiteral("Msg sent succesfully"));
    QCOMPARE(sender.log.lines(QtDebugMsg), debug);
    QCOMPARE(sender.log.lines(QtWarningMsg),
             isRefused ? lines({"Error in sendSms request"}) : QStringList());
    QVERIFY(sender.finished.isEmpty());
    QCOMPARE(pending->id(), -1);
    QCOMPARE(pending->errorCause(), 0);
    QVERIFY(sender.waitForTimers(1));
    QCOMPARE(pending->errorCause(), 5);
}

void TestHandingOver::theMessagingResultIsQueued()
{
    Sender sender;
    sender.messaging.outcome = ScriptedMessaging::Outcome::None;
    sender.send(vMessage(Hello));
    PendingMessage *const message = sender.service.findChild<PendingMessage *>();
    QVERIFY(message);
    sender.log.clear();
    Q_EMIT message->finished(message);
    QCOMPARE(sender.log.lines(QtDebugMsg), QStringList());
    settle();
    QCOMPARE(sender.log.lines(QtDebugMsg).last(), QStringLiteral("Msg sent succesfully"));
}

void TestHandingOver::tracesASuccess()
{
    Sender sender;
    sender.messaging.outcome = ScriptedMessaging::Outcome::None;
    sender.log.clear();
    sender.send(vMessage(Hello));
    QStringList handingOver = sender.log.lines(QtDebugMsg);
    QVERIFY(handingOver.value(0).startsWith(
        QStringLiteral("Enter PendingSmsId* SendSmsInterface::sendSms(const QString&) \"BEGIN:")));
    handingOver.removeFirst();
    QCOMPARE(handingOver,
             lines({"bool SendSmsInterfacePrivate::parseVMessage(const QString&)",
                    "PendingSmsId::PendingSmsId(QObject*)", "eventsAdded got connected  true",
                    "Exit PendingSmsId* SendSmsInterface::sendSms(const QString&)"}));
    sender.log.clear();
    Event inbound = sentEvent(41, Hello);
    inbound.setDirection(Event::Inbound);
    sender.history.announce({inbound, sentEvent(42, Hello)});
    QCOMPARE(
        sender.log.lines(QtDebugMsg),
        lines({"void SendSmsInterface::eventsAdded(const QList<CommHistory::Event>&)", "\"Hello\"",
               "\"Hello\"", "Received the event which was sent 2", "Emitting done success true"}));
    sender.log.clear();
    QVERIFY(sender.waitForTimers(1));
    QCOMPARE(sender.log.lines(QtDebugMsg),
             lines({"void SendSmsInterface::timeOut()", "Events Added Disconnected false"}));
    QCOMPARE(sender.log.lines(QtWarningMsg), QStringList());
}

void TestHandingOver::tracesATimeOut()
{
    Sender sender;
    sender.messaging.outcome = ScriptedMessaging::Outcome::None;
    sender.send(vMessage(Hello));
    sender.log.clear();
    QVERIFY(sender.waitForTimers(1));
    QCOMPARE(sender.log.lines(QtDebugMsg),
             lines({"void SendSmsInterface::timeOut()", "Events Added Disconnected true",
                    "Emitting done with failure msg not added"}));
}

void TestHandingOver::tracesItsLife()
{
    MessageLog log;
    {
        const SendSmsInterface service(nullptr);
        QCOMPARE(log.lines(QtDebugMsg),
                 lines({"SendSmsInterfacePrivate::SendSmsInterfacePrivate()",
                        "SendSmsInterface::SendSmsInterface(QObject*)",
                        "SendSMsInterface obj registered true"}));
        log.clear();
    }
    QCOMPARE(log.lines(QtDebugMsg),
             lines({"virtual SendSmsInterface::~SendSmsInterface()",
                    "Deleting SendSmsInterface Private"}));
}

void TestHandingOver::senderHasItsSlotsInOrder()
{
    const QMetaObject &type = SendSmsInterface::staticMetaObject;
    QCOMPARE(type.className(), "SendSmsInterface");
    QCOMPARE(type.superClass(), &QObject::staticMetaObject);
    QCOMPARE(ownMethods(type),
             lines({"private slot eventsAdded(QList<CommHistory::Event>) events",
                    "private slot msgSent(const PendingMessage*) msg", "private slot timeOut()"}));
    QCOMPARE(type.propertyCount(), type.propertyOffset());
}

void TestHandingOver::pendingSmsIdHasItsSignal()
{
    const QMetaObject &type = PendingSmsId::staticMetaObject;
    QCOMPARE(type.className(), "PendingSmsId");
    QCOMPARE(type.superClass(), &QObject::staticMetaObject);
    QCOMPARE(ownMethods(type), lines({"other signal finished(PendingSmsId*) pendingId"}));
    QCOMPARE(type.propertyCount(), type.propertyOffset());
}

void TestHandingOver::announcedTypesAreRegistered()
{
    const SendSmsInterface service(nullptr);
    QCOMPARE(busSignature<Event>(), QByteArray("(iixxibbissiisssssxa(ssssis)a(is))"));
    QCOMPARE(busSignature<QList<Event>>(), QByteArray("a(iixxibbissiisssssxa(ssssis)a(is))"));
    QCOMPARE(busSignature<CommHistory::MessagePart>(), QByteArray("(ssssis)"));
    QCOMPARE(busSignature<QList<CommHistory::MessagePart>>(), QByteArray("a(ssssis)"));
    QCOMPARE((busSignature<QPair<int, QString>>()), QByteArray("(is)"));
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QCOMPARE(QMetaType::fromName("CommHistory::Event::Contact"),
             (QMetaType::fromType<QPair<int, QString>>()));
#else
    QCOMPARE(QMetaType::type("CommHistory::Event::Contact"), (qMetaTypeId<QPair<int, QString>>()));
#endif
}

void TestHandingOver::standsOnTheBusAndExportsAdaptors()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    QVERIFY(!bus.objectRegisteredAt(Path));
    {
        History caller;
        SendSmsInterface service(nullptr);
        new GreetingAdaptor(&service);
        QCOMPARE(bus.objectRegisteredAt(Path), static_cast<QObject *>(&service));
        const auto answer = [&](const char *interface, const char *method) {
            QDBusPendingCallWatcher call(caller.bus().asyncCall(QDBusMessage::createMethodCall(
                bus.baseService(), Path, QString::fromLatin1(interface),
                QString::fromLatin1(method))));
            QSignalSpy finished(&call, &QDBusPendingCallWatcher::finished);
            return finished.wait(Patience) ? call.reply() : QDBusMessage();
        };
        QCOMPARE(answer("org.example.Greeting", "greet").arguments(), QVariantList{Hello});
        // Its own slots are not for the bus.
        QCOMPARE(answer("", "timeOut").type(), QDBusMessage::ErrorMessage);
    }
    QVERIFY(!bus.objectRegisteredAt(Path));
}

void TestHandingOver::aSecondSenderIsNotRegistered()
{
    Sender first;
    first.log.clear();
    SendSmsInterface second(nullptr);
    QCOMPARE(first.log.linesFrom(QtDebugMsg, QStringLiteral("SendSMsInterface")),
             lines({"SendSMsInterface obj registered false"}));
    QCOMPARE(QDBusConnection::sessionBus().objectRegisteredAt(Path),
             static_cast<QObject *>(&first.service));
    // It sends all the same.
    PendingSmsId *const pending = second.sendSms(vMessage(Hello));
    first.history.announce({sentEvent(42, Hello)});
    QCOMPARE(pending->id(), 42);
}

void TestHandingOver::pendingObjectsBelongToTheSender()
{
    const MessageLog log;
    ScriptedMessaging messaging;
    History history;
    QObject parent;
    SendSmsInterface *const service = new SendSmsInterface(&parent);
    QCOMPARE(service->parent(), &parent);
    const QPointer<PendingSmsId> finished = service->sendSms(vMessage(Hello));
    history.announce({sentEvent(42, Hello)});
    const QPointer<PendingSmsId> refused = service->sendSms(Unreadable);
    const QPointer<PendingSmsId> waiting = service->sendSms(vMessage(Hello));
    settle();
    QCOMPARE(finished->parent(), service);
    QCOMPARE(refused->parent(), service);
    QCOMPARE(waiting->parent(), service);
    delete service;
    QVERIFY(!finished);
    QVERIFY(!refused);
    QVERIFY(!waiting);
    history.announce({sentEvent(43, Hello)});
}

void TestHandingOver::doneEmitsFinished()
{
    PendingSmsId pending(nullptr);
    QSignalSpy finished(&pending, &PendingSmsId::finished);
    QCOMPARE(pending.id(), -1);
    QCOMPARE(pending.errorCause(), 0);
    QCOMPARE(pending.isError(), false);
    pending.done();
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(0).value<PendingSmsId *>(), &pending);
}

BUS_TEST_MAIN(TestHandingOver)
#include "tst_handingover.moc"

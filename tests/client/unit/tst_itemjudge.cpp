// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "import/itemjudge.h"

#include <QtTest/QTest>

using namespace KorvaSyncIf;

using Accepted = ItemJudge::Accepted;
Q_DECLARE_METATYPE(InputItem)
Q_DECLARE_METATYPE(ItemJudge::Accepted)
Q_DECLARE_METATYPE(RejectReason)

// What becomes of each kind of item, for a command that takes some of them.
class TestItemJudge : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesWhatItAccepts_data();
    void takesWhatItAccepts();
    void refusesWhatItDoesNotAccept_data();
    void refusesWhatItDoesNotAccept();
    void saysWhatNoItemIs();
    void findsAMessageUnderItsOwnFingerprint();
    void findsAMessageWithoutATimeAtAnyTime();
    void findsWhatABackupCannotHold();
};

namespace {

const Accepted forAdd = ItemJudge::Messages | ItemJudge::BackupCalls;
const Accepted forCalls = ItemJudge::BackupCalls | ItemJudge::CallEntries;
const Accepted forVerify = forAdd | forCalls;

InputItem item(InputItem::Kind kind, const char *bytes = "")
{
    InputItem item;
    item.kind = kind;
    item.bytes = bytes;
    return item;
}

InputItem vMessage(const char *date = "20101103T142530Z")
{
    const QByteArray bytes = "BEGIN:VMSG\r\nVERSION:1.1\r\nX-IRMC-STATUS:READ\r\n"
                             "X-IRMC-BOX:INBOX\r\nX-ABC-DT:"
        + QByteArray(date)
        + "\r\nBEGIN:VCARD\r\nVERSION:2.1\r\nTEL:+15550100\r\nEND:VCARD\r\nBEGIN:VENV\r\n"
          "BEGIN:VBODY\r\nHello\r\nEND:VBODY\r\nEND:VENV\r\nEND:VMSG\r\n";
    return item(InputItem::Message, bytes.constData());
}

InputItem callEntry()
{
    return item(InputItem::CallEntry,
                "BEGIN:VCALLHISTENTRY\r\nTYPE:incoming\r\nTEL:+15550100\r\nDURATION:30\r\n"
                "CALL-DATETIME:20101103T142530Z\r\nEND:VCALLHISTENTRY\r\n");
}

InputItem smsElement()
{
    return item(InputItem::AndroidSms,
                R"(<sms address="+15550100" date="1288794330000" type="1" body="Hello" />)");
}

InputItem callElement()
{
    return item(InputItem::AndroidCall,
                R"(<call number="+15550100" duration="30" date="1288794330000" type="1" />)");
}

NormalisingRules rules(bool badTimeIsNow = false)
{
    NormalisingRules rules;
    rules.badTimeIsNow = badTimeIsNow;
    rules.localZone = QTimeZone::utc();
    rules.now = QDateTime(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC);
    return rules;
}

NewItem judged(Accepted accepted, const InputItem &input, bool badTimeIsNow = false)
{
    return ItemJudge(accepted, rules(badTimeIsNow)).judge(input);
}

const QDateTime ownTime(QDate(2010, 11, 3), QTime(14, 25, 30), Qt::UTC);
const QString number = QStringLiteral("+15550100");
const QString hello = QStringLiteral("Hello");

} // namespace

void TestItemJudge::takesWhatItAccepts_data()
{
    QTest::addColumn<Accepted>("accepted");
    QTest::addColumn<InputItem>("input");
    QTest::addColumn<int>("content"); // of the variant
    QTest::newRow("vMessage, add") << forAdd << vMessage() << 1;
    QTest::newRow("vMessage, verify") << forVerify << vMessage() << 1;
    QTest::newRow("sms, add") << forAdd << smsElement() << 1;
    QTest::newRow("sms, verify") << forVerify << smsElement() << 1;
    QTest::newRow("call element, add") << forAdd << callElement() << 2;
    QTest::newRow("call element, calls add") << forCalls << callElement() << 2;
    QTest::newRow("call element, verify") << forVerify << callElement() << 2;
    QTest::newRow("call entry, calls add") << forCalls << callEntry() << 2;
    QTest::newRow("call entry, verify") << forVerify << callEntry() << 2;
}

void TestItemJudge::takesWhatItAccepts()
{
    QFETCH(Accepted, accepted);
    QFETCH(InputItem, input);
    const NewItem item = judged(accepted, input);
    QCOMPARE(item.result.rejectReason, RejectReason::None);
    QCOMPARE(item.result.detail.english, QString());
    QTEST(static_cast<int>(item.content.index()), "content");
    QCOMPARE(item.bytes, input.bytes);
}

void TestItemJudge::refusesWhatItDoesNotAccept_data()
{
    QTest::addColumn<Accepted>("accepted");
    QTest::addColumn<InputItem>("input");
    QTest::addColumn<RejectReason>("rejectReason");
    QTest::addColumn<QString>("detail");
    const auto row = [](const char *name, Accepted accepted, const InputItem &input,
                        RejectReason rejectReason, const char *detail = "") {
        QTest::newRow(name) << accepted << input << rejectReason << QString::fromLatin1(detail);
    };
    const InputItem card = item(InputItem::ForeignObject, "BEGIN:VCARD\r\nEND:VCARD\r\n");
    const InputItem cut = item(InputItem::CutFile);
    const InputItem mms = item(InputItem::AndroidMms, "<mms />");
    InputItem endless = item(InputItem::Message);
    endless.isTooLong = true;
    const char *const aMessage = "a message, which korvasync add takes";
    const char *const aCut = "the file is cut off here, so some may be missing";
    row("call entry, add", forAdd, callEntry(), RejectReason::ForeignObject,
        "a call, which korvasync calls add takes");
    row("vMessage, calls add", forCalls, vMessage(), RejectReason::ForeignObject, aMessage);
    row("sms, calls add", forCalls, smsElement(), RejectReason::ForeignObject, aMessage);
    row("mms, calls add", forCalls, mms, RejectReason::ForeignObject, aMessage);
    row("mms, add", forAdd, mms, RejectReason::MmsNotSupported);
    row("object, add", forAdd, card, RejectReason::ForeignObject,
        "not a text message but an object that begins with BEGIN:VCARD");
    row("object, calls add", forCalls, card, RejectReason::ForeignObject,
        "no call but an object that begins with BEGIN:VCARD");
    row("cut, add", forAdd, cut, RejectReason::SmsParse, aCut);
    row("cut, calls add", forCalls, cut, RejectReason::CallParse, aCut);
    row("too long", forAdd, endless, RejectReason::SmsParse, "longer than 32 MiB, so not kept");
    row("sms without a text", forAdd, item(InputItem::AndroidSms, "<sms />"),
        RejectReason::SmsParse, "not a whole sms element");
    row("vMessage without a time", forAdd, vMessage(""), RejectReason::BadTime);
}

void TestItemJudge::refusesWhatItDoesNotAccept()
{
    QFETCH(Accepted, accepted);
    QFETCH(InputItem, input);
    const NewItem item = judged(accepted, input);
    QTEST(item.result.rejectReason, "rejectReason");
    QTEST(item.result.detail.english, "detail");
    QVERIFY(!item.isNew());
}

void TestItemJudge::saysWhatNoItemIs()
{
    QCOMPARE(ItemJudge(forAdd, rules()).noItem(), RejectReason::SmsParse);
    QCOMPARE(ItemJudge(forVerify, rules()).noItem(), RejectReason::SmsParse);
    QCOMPARE(ItemJudge(forCalls, rules()).noItem(), RejectReason::CallParse);
}

void TestItemJudge::findsAMessageUnderItsOwnFingerprint()
{
    const Fingerprint own = Fingerprint::of(LocInbox, number, ownTime, hello);
    const NewItem item = judged(forAdd, vMessage());
    QCOMPARE(item.sought, NewItem::Fingerprints({own}));
    QCOMPARE(item.stored, NewItem::Fingerprints({own}));
    QVERIFY(!item.untimed);
}

void TestItemJudge::findsAMessageWithoutATimeAtAnyTime()
{
    const Fingerprint untimed = Fingerprint::atAnyTime(LocInbox, number, hello);
    const NewItem without = judged(forAdd, vMessage(""), true);
    QCOMPARE(without.sought, NewItem::Fingerprints({untimed}));
    QCOMPARE(without.stored.last(), untimed);
    QVERIFY(!without.untimed);
    const NewItem with = judged(forAdd, vMessage(), true);
    QCOMPARE(with.sought,
             NewItem::Fingerprints({Fingerprint::of(LocInbox, number, ownTime, hello)}));
    QCOMPARE(with.stored.last(), untimed);
    QVERIFY(with.untimed == untimed);
}

void TestItemJudge::findsWhatABackupCannotHold()
{
    const NewItem sms = judged(forAdd, smsElement());
    QCOMPARE(sms.sought,
             NewItem::Fingerprints({Fingerprint::of(LocInbox, number, ownTime, hello),
                                    Fingerprint::ofExport(LocMyFolder, number, ownTime, hello)}));
    Call call;
    call.type = QStringLiteral("incoming");
    call.number = number;
    call.start = ownTime;
    call.duration = 30;
    QCOMPARE(judged(forAdd, callElement()).sought,
             NewItem::Fingerprints({Fingerprint::of(call), Fingerprint::ofExport(call)}));
    QCOMPARE(judged(forAdd, callElement()).stored, NewItem::Fingerprints({Fingerprint::of(call)}));
}

QTEST_GUILESS_MAIN(TestItemJudge)
#include "tst_itemjudge.moc"

// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtTest/QTest>

//! Senders and texts that mean something to the query language, to regular expressions or to a
//! terminal: through add, list, show, modify and delete each stays what it is, and so does what
//! lies beside it.
class TestHostile : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void sendersAndTexts_data();
    void sendersAndTexts();
    void textsOfAnyBytes();
};

namespace {

const QByteArray Bystander = vMessage("INBOX", "20240501T090000Z", "+15550100", "untouched");

QJsonObject objectOf(const QByteArray &ndjson)
{
    return QJsonDocument::fromJson(ndjson.trimmed()).object();
}

QString valueOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toVariant().toString();
}

} // namespace

void TestHostile::sendersAndTexts_data()
{
    QTest::addColumn<QString>("word");
    // Whether the query for a conversation can find what it is asked for; where it cannot, each
    // message starts a conversation of its own, and a change, which must not, is refused.
    QTest::addColumn<bool>("isFound");

    QTest::newRow("quote") << text("O'Neill") << false;
    QTest::newRow("double quote") << text("say \"hi\"") << true;
    QTest::newRow("backslash") << text("back\\slash\\") << false;
    QTest::newRow("escaped quote") << text("\\' . ?s ?p ?o") << false;
    QTest::newRow("code point escape") << text("\\u0027 } DELETE { ?s ?p ?o }") << false;
    QTest::newRow("brace") << text("} ; { ?s ?p ?o } #") << false;
    QTest::newRow("second statement")
        << text("x'} ; DELETE { ?s ?p ?o } WHERE { ?s ?p ?o } #") << false;
    QTest::newRow("other service")
        << text("x') SERVICE <http://127.0.0.1:9/> { ?a ?b ?c } #") << false;
    QTest::newRow("everything") << text(".*") << true;
    QTest::newRow("end") << text("$") << true;
    QTest::newRow("open bracket") << text("([a-") << false;
    QTest::newRow("repetitions within repetitions") << text("(a+)+(a+)+(a+)+b") << false;
    QTest::newRow("format marks") << text("%1 %s %n {} ${HOME} $(id)") << false;
    QTest::newRow("terminal escapes") << text("\x1B]0;title\x07\x1B[2J") << true;
    QTest::newRow("right to left") << text("\u202Egnp.exe") << true;
    QTest::newRow("10,000 characters") << QString(10000, QLatin1Char('x')) << true;
    QTest::newRow("10,000 quotes") << QString(10000, QLatin1Char('\'')) << false;
}

void TestHostile::sendersAndTexts()
{
    QFETCH(QString, word);
    QFETCH(bool, isFound);
    const ClientProcess client;
    client.fill(Bystander);

    // Control characters would break out of a number's line, so such a sender is none.
    const bool canSend = std::none_of(word.cbegin(), word.cend(),
                                      [](QChar c) { return c.category() == QChar::Other_Control; });
    const QByteArray sender = canSend ? word.toUtf8() : QByteArray("+15550177");
    const auto written = [&](const char *more) {
        return vMessage("INBOX", "20240501T100000Z", sender, word.toUtf8() + more);
    };
    const QByteArray added =
        client.run({text("-o"), text("ndjson"), text("add"), text("-")}, written("")).output;
    QCOMPARE(valueOf(objectOf(added.left(added.indexOf('\n'))), "status"), text("added"));
    const QString id = valueOf(objectOf(added.left(added.indexOf('\n'))), "id");

    const QStringList show{text("-o"), text("ndjson"), text("show"), id};
    QCOMPARE(valueOf(objectOf(client.run(show).output), "number"), QString::fromUtf8(sender));
    QCOMPARE(valueOf(objectOf(client.run(show).output), "body"), word);
    QCOMPARE(objectOf(client.listed({text("--number"), QString::fromUtf8(sender)})),
             objectOf(client.run(show).output));
    const QByteArray page = client.run({text("show"), id, text("-o"), text("text")}).output;
    QVERIFY(!page.contains('\x1B'));

    QCOMPARE(client.run({text("modify"), id, text("-")}, written(" changed")).exitCode,
             isFound ? 0 : 1);
    QCOMPARE(valueOf(objectOf(client.run(show).output), "body"),
             isFound ? word + text(" changed") : word);
    QCOMPARE(client.run({text("delete"), text("--yes"), id}).exitCode, 0);
    QCOMPARE(client.run(show).exitCode, 4);

    const QJsonObject bystander = objectOf(client.listed());
    QCOMPARE(valueOf(bystander, "number"), text("+15550100"));
    QCOMPARE(valueOf(bystander, "body"), text("untouched"));
}

// Every code point below 256 but CR, which no text keeps, and a sample of the rest.
void TestHostile::textsOfAnyBytes()
{
    QString body = text("\uFEFFstart ");
    for (ushort c = 0; c < 256; ++c) {
        if (c != '\r')
            body += QChar(c);
    }
    body += text("\uFEFF \uFFFD \uFFFF \U0001F600 end");
    const ClientProcess client;
    client.fill(Bystander + vMessage("INBOX", "20240501T100000Z", "+15550177", body.toUtf8()));
    const QJsonObject stored = objectOf(client.listed({text("--number"), text("+15550177")}));
    QCOMPARE(valueOf(stored, "body"), body);
}

QTEST_GUILESS_MAIN(TestHostile)
#include "tst_hostile.moc"

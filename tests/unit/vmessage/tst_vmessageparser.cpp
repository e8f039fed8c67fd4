// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "scannedmessages.h"
#include "vmessagesupport.h"

#include <vmessage/vmessageparser.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRandomGenerator>
#include <QtTest/QtTest>

#include <cstring>
#include <memory>

using namespace VMessageSupport;

namespace {

QByteArray escaped(const char *text, int length)
{
    QByteArray result;
    for (const char c : QByteArray(text, length)) {
        if (c == '\n')
            result += "\\n";
        else if (c == '\\')
            result += "\\\\";
        else if (uchar(c) < 0x20 || c == 0x7F)
            result += "\\x" + QByteArray(1, c).toHex();
        else
            result += c;
    }
    return result;
}

QByteArray field(const char *name, const char *value)
{
    return value ? name + QByteArray(": ") + escaped(value, int(strlen(value))) + '\n'
                 : QByteArray();
}

// The records in the form of the .expected files: absent parts and fields are left out.
QByteArray rendered(VMessageParser &parser, const VMessage *message)
{
    if (!message)
        return "no message\n";
    QByteArray result;
    if (const VMessageHeader *header = parser.header(message)) {
        result += "[header]\n" + field("status", header->status) + field("box", header->box)
            + field("type", header->type) + field("dateTime", header->dateTime)
            + field("messageType", header->messageType);
    }
    if (const VMessageOriginator *originator = parser.originator(message)) {
        result += "[originator]\n" + field("name", originator->name)
            + field("telephone", originator->telephone);
        if (originator->count > 1)
            result += "count: " + QByteArray::number(originator->count) + '\n';
    }
    if (const VMessageRecipient *recipient = parser.recipients(message)) {
        result += "[recipient]\n" + field("name", recipient->name)
            + field("telephone", recipient->telephone)
            + "count: " + QByteArray::number(recipient->count) + '\n';
    }
    if (const VMessageBody *body = parser.body(message)) {
        result += "[body]\n" + field("date", body->date) + field("property", body->property)
            + field("encoding", body->encoding) + field("charset", body->charset)
            + field("language", body->language) + "text: " + escaped(body->text, body->length)
            + "\nlength: " + QByteArray::number(body->length) + '\n';
    }
    return result;
}

// Parses a copy without a byte of room behind it, so that a sanitizer sees a read too far.
const VMessage *parse(VMessageParser &parser, const QByteArray &bytes)
{
    const auto size = size_t(bytes.size());
    const std::unique_ptr<char[]> copy(new char[size]);
    std::copy(bytes.begin(), bytes.end(), copy.get());
    return parser.parseVMessage(copy.get(), uint(size));
}

QByteArray parsed(const QByteArray &bytes)
{
    VMessageParser parser;
    return rendered(parser, parse(parser, bytes));
}

VMessageProblem problemOf(const QByteArray &bytes)
{
    VMessageParser parser;
    parse(parser, bytes);
    return parser.problem();
}

// Parses the bytes. What is refused always has a reason in one of its lines, and nothing else has.
bool hasProblemOnlyIfRefused(const QByteArray &bytes)
{
    VMessageParser parser;
    const VMessage *message = parse(parser, bytes);
    const VMessageProblem problem = parser.problem();
    if (message)
        return problem.kind == VMessageProblem::None && problem.line == 0;
    return problem.kind != VMessageProblem::None && problem.kind != VMessageProblem::LongText
        && problem.line >= 1 && problem.line <= unsigned(bytes.count('\n')) + 1;
}

// The text of the message, null when there is no message or no body.
QByteArray textOf(const QByteArray &bytes)
{
    VMessageParser parser;
    const VMessageBody *body = parser.body(parse(parser, bytes));
    return body ? QByteArray(body->text, body->length) : QByteArray();
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void addMessageFiles()
{
    QTest::addColumn<QString>("path");
    const QDir folder(QStringLiteral(VMESSAGE_DATA));
    for (const QString &name : folder.entryList({QStringLiteral("*.vmsg")}))
        QTest::newRow(qPrintable(name)) << folder.filePath(name);
}

} // namespace

Q_DECLARE_METATYPE(VMessageProblem::Kind)

class TestVMessageParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsMessageFiles_data() { addMessageFiles(); }
    void readsMessageFiles();
    void readsTheSameThroughTheScanner_data() { addMessageFiles(); }
    void readsTheSameThroughTheScanner();
    void readsEveryPrefix_data() { addMessageFiles(); }
    void readsEveryPrefix();
    void readsEveryChangedByte_data() { addMessageFiles(); }
    void readsEveryChangedByte();

    void keepsEveryOwnText();
    void cutsNoOwnText_data();
    void cutsNoOwnText();
    void cutsNoOwnTextAtALengthInUtf16Units();
    void passesOverLineEndsBehindTheEnd();
    void passesOverAnotherEndOfTheBody();
    void endsBehindABareLineFeedWithoutALastLineEnd();
    void countsATerminatingZeroIn();
    void refusesNullAndNothing();
    void saysWhyAMessageIsRefused_data();
    void saysWhyAMessageIsRefused();
    void hasNoProblemBeforeTheFirstMessage();
    void replacesTheResultBefore();
    void handsOutNothingForNoMessage();

    void survivesHostileInput_data();
    void survivesHostileInput();
    void survivesNoise();
};

void TestVMessageParser::readsMessageFiles()
{
    QFETCH(QString, path);
    QString expected = path;
    expected.replace(QLatin1String(".vmsg"), QLatin1String(".expected"));
    QCOMPARE(parsed(contents(path)), contents(expected));
}

void TestVMessageParser::readsTheSameThroughTheScanner()
{
    QFETCH(QString, path);
    const QByteArray bytes = contents(path);
    const auto messages = scannedMessages({bytes.constData(), size_t(bytes.size())});
    QVERIFY(messages.size() <= 1);
    QByteArray result = "no message\n";
    for (const ScannedMessage &message : messages)
        result = parsed(QByteArray(message.bytes.data(), int(message.bytes.size())));
    QCOMPARE(result, parsed(bytes));
}

void TestVMessageParser::readsEveryPrefix()
{
    QFETCH(QString, path);
    const QByteArray whole = contents(path);
    for (int length = 0; length < whole.size(); ++length)
        QVERIFY(hasProblemOnlyIfRefused(whole.left(length)));
}

void TestVMessageParser::readsEveryChangedByte()
{
    QFETCH(QString, path);
    const QByteArray whole = contents(path);
    const int step = qEnvironmentVariableIsSet("KORVASYNC_TEST_SHORT") ? 13 : 1;
    for (int i = 0; i < whole.size(); i += step) {
        for (const char c : {'\0', '\n', '=', ':', ';', '\xFF'}) {
            QByteArray changed = whole;
            changed[i] = c;
            QVERIFY(hasProblemOnlyIfRefused(changed));
        }
    }
}

void TestVMessageParser::keepsEveryOwnText()
{
    TextSource texts(1);
    for (int i = 0; i < 1000; ++i) {
        const QByteArray text = texts.next();
        QCOMPARE(textOf(ownMessage(text)), text);
    }
}

void TestVMessageParser::cutsNoOwnText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("short") << QByteArray("Hello");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("closing line first") << QByteArray("END:VBODY");
    QTest::newRow("closing line last") << QByteArray("a\nEND:VBODY");
    QTest::newRow("closing lines last") << QByteArray("a\nEND:VBODY\nEND:VENV\nEND:VMSG");
    QTest::newRow("closing lines within") << QByteArray("a\nEND:VBODY\nEND:VENV\nEND:VMSG\nb\n");
    QTest::newRow("closing lines twice")
        << QByteArray("END:VBODY\nEND:VBODY\nEND:VENV\nEND:VMSG\n\nEND:VBODY\nEND:VMSG\n\n");
    QTest::newRow("own message") << withLfOnly(ownMessage("inner"));
    QTest::newRow("two messages") << withLfOnly(ownMessage("1") + ownMessage("2"));
}

// What is cut gives no message or the whole text, never a part of it.
void TestVMessageParser::cutsNoOwnText()
{
    QFETCH(QByteArray, text);
    const QByteArray whole = ownMessage(text);
    const int textEnd = int(whole.lastIndexOf("END:VBODY")) + int(strlen("END:VBODY"));
    for (int length = 0; length <= whole.size(); ++length) {
        VMessageParser parser;
        const VMessage *message = parse(parser, whole.left(length));
        QCOMPARE(message != nullptr, length >= textEnd);
        if (message) {
            QCOMPARE(QByteArray(parser.body(message)->text, parser.body(message)->length), text);
            QCOMPARE(QByteArray(parser.originator(message)->telephone), QByteArray("+15550100"));
        }
    }
}

// The sending service passes a length in UTF-16 units over UTF-8 bytes.
void TestVMessageParser::cutsNoOwnTextAtALengthInUtf16Units()
{
    const QString text = QStringLiteral("\u00E9\u00E9\u00E9\nEND:VBODY\nEND:VMSG\n\U0001F600");
    const QByteArray whole = ownMessage(text.toUtf8());
    const auto units = int(QString::fromUtf8(whole).size());
    QCOMPARE(int(whole.size()) - units, 5);
    QCOMPARE(textOf(whole.left(units)), text.toUtf8());

    const QString longText = text.repeated(20);
    const QByteArray longMessage = ownMessage(longText.toUtf8());
    const auto longUnits = int(QString::fromUtf8(longMessage).size());
    QCOMPARE(parsed(longMessage.left(longUnits)), QByteArray("no message\n"));
    const QByteArray lengthened = longMessage + QByteArray(longMessage.size() - longUnits, '\n');
    QCOMPARE(textOf(lengthened.left(longMessage.size())), longText.toUtf8());
}

void TestVMessageParser::passesOverLineEndsBehindTheEnd()
{
    for (const char *ends : {"\n", "\r\n\r\n", "\r", "\n\n\n\r\r"})
        QCOMPARE(parsed(ownMessage("a\n") + ends), parsed(ownMessage("a\n")));
    QCOMPARE(textOf(ownMessage("a\n") + "\r\n\n"), QByteArray("a\n"));
}

// Behind the end of the body a line is closing or blank, also where the lines of damaged
// messages were mixed and a bare line feed would make it text inside.
void TestVMessageParser::passesOverAnotherEndOfTheBody()
{
    const QByteArray message =
        ownMessage("a").replace("END:VBODY\r\n", "END:VBODY\r\n\n\nEND:VBODY\n");
    QCOMPARE(textOf(message), QByteArray("a"));
}

// As an editor leaves a message whose last line end goes lost where files are joined.
void TestVMessageParser::endsBehindABareLineFeedWithoutALastLineEnd()
{
    const QByteArray message = ownMessage("a").replace("\r\nEND:VBODY", "\nEND:VBODY").chopped(2);
    QCOMPARE(textOf(message), QByteArray("a"));
    QCOMPARE(textOf(message.chopped(int(strlen("\r\nEND:VMSG")))), QByteArray("a"));
}

void TestVMessageParser::countsATerminatingZeroIn()
{
    const QByteArray bytes = ownMessage("Hello");
    VMessageParser parser;
    const VMessage *message = parser.parseVMessage(bytes.constData(), uint(bytes.size()) + 1);
    QVERIFY(message);
    QCOMPARE(parser.body(message)->text, "Hello");
    QCOMPARE(parser.body(message)->length, 5);
}

void TestVMessageParser::refusesNullAndNothing()
{
    VMessageParser parser;
    QVERIFY(!parser.parseVMessage(nullptr, 0));
    QVERIFY(!parser.parseVMessage("", 1));
}

void TestVMessageParser::saysWhyAMessageIsRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<VMessageProblem::Kind>("kind");
    QTest::addColumn<unsigned>("line");
    using P = VMessageProblem;
    const auto row = [](const char *name, const QByteArray &bytes, P::Kind kind, unsigned line) {
        QTest::newRow(name) << bytes << kind << line;
    };
    const QByteArray own = ownMessage("Hello\nthere");
    const QByteArray lf = withLfOnly(own);
    const auto without = [](QByteArray message, const char *text) {
        return message.replace(text, "");
    };

    row("nothing", "", P::NoBegin, 1);
    row("a text", "Hello\r\nthere\r\n", P::NoBegin, 1);
    row("beginning lost", without(own, "BEGIN:VMSG\r\n"), P::NoBegin, 1);
    row("beginning alone", "BEGIN:VMSG", P::CutHeader, 1);
    row("cut in the header", own.left(own.indexOf("TEL:")), P::CutHeader, 9);
    row("cut in a line of the header", own.left(own.indexOf("TEL:") + 6), P::CutHeader, 10);
    row("cut in the header, LF", lf.left(lf.indexOf("TEL:") + 6), P::CutHeader, 10);
    row("cut in BEGIN:VBODY", own.left(own.indexOf("BEGIN:VBODY") + 9), P::CutHeader, 13);
    row("cut and blank lines", own.left(own.indexOf("TEL:")) + "\r\n \r\n\n", P::CutHeader, 9);
    row("cut header before another", own.left(own.indexOf("TEL:")) + own, P::CutHeader, 9);
    row("lines around a cut one", "1\r\n2\r\nBEGIN:VMSG\r\nVERSION:1.1\r\n", P::CutHeader, 4);
    row("beginning of the body lost", without(own, "BEGIN:VBODY\r\n"), P::NoBody, 15);
    row("beginning of the body damaged", QByteArray(own).replace("BEGIN:VBODY", "BEGIN:VBOD"),
        P::NoBody, 16);
    row("beginning of the body damaged before another message",
        QByteArray(own).replace("BEGIN:VBODY", "BEGIN:VBOD") + own, P::NoBody, 16);
    row("no body", without(without(own, "BEGIN:VBODY\r\n"), "END:VMSG\r\n"), P::NoBody, 15);
    row("closed envelope without a body", "BEGIN:VMSG\r\nBEGIN:VENV\r\nEND:VENV\r\nEND:VENV\r\n",
        P::NoBody, 3);
    row("body begins and nothing else", own.left(own.indexOf("X-SMS")), P::OpenBody, 13);
    row("cut in the text", own.left(own.indexOf("there")), P::OpenBody, 13);
    row("cut in END:VBODY", own.left(own.indexOf("END:VBODY") + 8), P::OpenBody, 13);
    row("cut in the text, LF", lf.left(lf.indexOf("there")), P::OpenBody, 13);
    row("end of the body lost", without(own, "END:VBODY\r\n"), P::OpenBody, 13);
    row("end of the body lost, LF", without(lf, "END:VBODY\n"), P::OpenBody, 13);
    row("cut behind a closing line of the own text",
        without(ownMessage("a\nEND:VBODY\nb"), "\r\nEND:VBODY"), P::OpenBody, 13);
    row("line behind the body", QByteArray(own).replace("END:VENV", "X-ABC:1\r\nEND:VENV"),
        P::LineBehindBody, 17);
    row("line behind the envelope", without(own, "END:VMSG\r\n") + "\r\nHello\r\n",
        P::LineBehindBody, 19);
    row("line behind the body, LF", QByteArray(lf).replace("END:VENV", "X-ABC:1\nEND:VENV"),
        P::LineBehindBody, 17);
    row("line behind the second of two bodies",
        QByteArray(lf).replace("END:VBODY\n", "END:VBODY\nb\nEND:VBODY\n\nc\nd\n"),
        P::LineBehindBody, 20);
}

void TestVMessageParser::saysWhyAMessageIsRefused()
{
    QFETCH(QByteArray, bytes);
    QFETCH(VMessageProblem::Kind, kind);
    QFETCH(unsigned, line);
    QCOMPARE(parsed(bytes), QByteArray("no message\n"));
    QCOMPARE(problemOf(bytes).kind, kind);
    QCOMPARE(problemOf(bytes).line, line);
}

void TestVMessageParser::hasNoProblemBeforeTheFirstMessage()
{
    QCOMPARE(VMessageParser().problem().kind, VMessageProblem::None);
    QCOMPARE(VMessageParser().problem().line, 0U);
}

void TestVMessageParser::replacesTheResultBefore()
{
    VMessageParser parser;
    QVERIFY(parse(parser, ownMessage("first")));
    QVERIFY(!parse(parser, "BEGIN:VMSG\r\n"));
    QCOMPARE(parser.problem().kind, VMessageProblem::CutHeader);
    const VMessage *message = parse(parser, "BEGIN:VMSG\r\nEND:VMSG\r\n");
    QVERIFY(message);
    QCOMPARE(parser.problem().kind, VMessageProblem::None);
    QCOMPARE(parser.problem().line, 0U);
    QCOMPARE(rendered(parser, message), QByteArray("[header]\n"));
}

void TestVMessageParser::handsOutNothingForNoMessage()
{
    VMessageParser parser;
    QVERIFY(!parser.header(nullptr));
    QVERIFY(!parser.originator(nullptr));
    QVERIFY(!parser.recipients(nullptr));
    QVERIFY(!parser.body(nullptr));
}

void TestVMessageParser::survivesHostileInput_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("text");
    constexpr int mebi = 1 << 20;
    const QByteArray quoted =
        "BEGIN:VMSG\r\nBEGIN:VBODY\r\nSubject;ENCODING=QUOTED-PRINTABLE:%1\r\nEND:VBODY\r\n";
    const QByteArray card = "BEGIN:VMSG\r\nBEGIN:VCARD\r\n%1\r\nBEGIN:VBODY\r\nhm\r\nEND:VBODY\r\n";
    const QByteArray nested = "BEGIN:VMSG\r\n%1BEGIN:VBODY\r\nhm\r\nEND:VBODY\r\n";

    QTest::newRow("long text") << ownMessage(QByteArray(mebi, 'x')) << QByteArray(mebi, 'x');
    QTest::newRow("many line feeds")
        << ownMessage(QByteArray(mebi, '\n')) << QByteArray(mebi, '\n');
    QTest::newRow("long blank line") << ownMessage(QByteArray(mebi, ' ')) << QByteArray(mebi, ' ');
    QTest::newRow("closing lines") << ownMessage(QByteArray("END:VBODY\n").repeated(100000))
                                   << QByteArray("END:VBODY\n").repeated(100000);
    QTest::newRow("long name") << QByteArray(nested).replace("%1", QByteArray(mebi, 'X') + ":1\r\n")
                               << QByteArray("hm");
    QTest::newRow("parameters") << QByteArray(nested).replace(
        "%1", QByteArray("X;").repeated(mebi / 2) + ":1\r\n")
                                << QByteArray("hm");
    QTest::newRow("envelopes") << QByteArray(nested).replace(
        "%1", QByteArray("BEGIN:VENV\r\n").repeated(100000))
                               << QByteArray("hm");
    QTest::newRow("envelopes and cards") << QByteArray(nested).replace(
        "%1", QByteArray("BEGIN:VENV\r\nBEGIN:VCARD\r\n").repeated(100000))
                                         << QByteArray("hm");
    QTest::newRow("folds") << QByteArray(card).replace("%1",
                                                       "TEL:" + QByteArray("1\n ").repeated(100000))
                           << QByteArray("hm");
    QTest::newRow("soft breaks") << QByteArray(quoted).replace("%1",
                                                               QByteArray("=\r\n").repeated(100000))
                                 << QByteArray("");
    QTest::newRow("equals signs and blanks")
        << QByteArray(quoted).replace("%1", "=" + QByteArray("= ").repeated(100000) + "z")
        << "=" + QByteArray("= ").repeated(100000) + "z";
    QTest::newRow("properties above the text") << QByteArray(nested).replace("%1", "").replace(
        "hm", QByteArray("X-A:1\r\n").repeated(100000) + "TEXT:hm")
                                               << QByteArray("hm");
    QTest::newRow("blank lines above the text") << QByteArray(nested).replace("%1", "").replace(
        "hm", QByteArray("\r\n").repeated(100000) + "hm")
                                                << QByteArray("hm");
}

void TestVMessageParser::survivesHostileInput()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, text);
    QVERIFY(textOf(bytes) == text);
}

void TestVMessageParser::survivesNoise()
{
    QRandomGenerator random(7);
    const QByteArray opening = "BEGIN:VMSG\r\nBEGIN:VBODY\r\n";
    for (int i = 0; i < 1000; ++i) {
        QByteArray noise(int(random.bounded(200)), '\0');
        for (char &c : noise)
            c = char(random.bounded(256));
        parsed(noise);
        parsed(opening + "Subject;ENCODING=QUOTED-PRINTABLE;CHARSET=ISO-2022-JP:" + noise
               + "\r\nEND:VBODY\r\n");
        parsed(opening + noise + "\r\nEND:VBODY\r\nEND:VMSG\r\n");
    }
}

QTEST_APPLESS_MAIN(TestVMessageParser)

#include "tst_vmessageparser.moc"

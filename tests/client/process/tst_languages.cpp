// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QXmlStreamReader>
#include <QtTest/QTest>

#include <algorithm>

// What people read in their own language, and what scripts read in none.
class TestLanguages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void followsTheEnvironment_data();
    void followsTheEnvironment();
    void helps();
    void keepsToTheWidthOfATerminal();
    void translatesErrors_data();
    void translatesErrors();
    void translatesWhatIsRefused();
    void translatesWhatIsWrongWithAMessage_data();
    void translatesWhatIsWrongWithAMessage();
    void translatesTables();
    void asksAndUnderstands_data();
    void asksAndUnderstands();
    void leavesWhatScriptsReadAlone_data();
    void leavesWhatScriptsReadAlone();
    void keepsTheRejectsInEnglish();
    void hasEveryTextWithItsPlaceholders_data();
    void hasEveryTextWithItsPlaceholders();
};

static const char *const german = "de_DE.UTF-8";
static const char *const spanish = "es_ES.UTF-8";
static const QByteArray hello = vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello");
static const QByteArray draft = vMessage("DRAFTS", "20101103T142530Z", "+15550100", "Hello");

//! "LC_ALL=de_DE.UTF-8 LANGUAGE=es", and nothing else that names a language.
static void setLocale(ClientProcess &client, const char *assignments)
{
    for (const char *variable : {"LC_ALL", "LC_MESSAGES", "LANG", "LANGUAGE"})
        client.environment.remove(text(variable));
    for (const QString &assignment :
         text(assignments).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        client.environment.insert(assignment.section(QLatin1Char('='), 0, 0),
                                  assignment.section(QLatin1Char('='), 1));
    }
}

static QByteArray locale(const char *name) { return QByteArray("LC_ALL=") + name; }

void TestLanguages::followsTheEnvironment_data()
{
    QTest::addColumn<QByteArray>("heading");
    const auto row = [](const char *assignments, const char *heading) {
        QTest::newRow(assignments) << QByteArray(heading);
    };
    const char *const inEnglish = "Usage: korvasync [OPTIONS] COMMAND [ARGUMENTS]\n";
    const char *const inGerman = "Aufruf: korvasync [OPTIONEN] BEFEHL [ARGUMENTE]\n";
    const char *const inSpanish = "Uso: korvasync [OPCIONES] ORDEN [ARGUMENTOS]\n";
    row("", inEnglish);
    row("LC_ALL=C", inEnglish);
    row("LC_ALL=POSIX", inEnglish);
    row("LC_ALL=C.UTF-8", inEnglish);
    row("LC_ALL=en_GB.UTF-8", inEnglish);
    row("LC_ALL=xx_XX.UTF-8", inEnglish);
    row("LC_ALL=../../korvasync_de", inEnglish);
    row("LC_ALL=de_DE.UTF-8", inGerman);
    row("LC_ALL=es_ES.UTF-8", inSpanish);
    row("LANG=de", inGerman);
    row("LANG=de_AT@euro", inGerman);
    row("LANG=es_MX.UTF-8", inSpanish);
    row("LC_MESSAGES=es_ES LANG=de_DE", inSpanish);
    row("LC_ALL=de_DE LC_MESSAGES=es_ES LANG=es_ES", inGerman);
    row("LC_ALL= LANG=de_DE", inGerman);
    row("LC_ALL=C LANG=de_DE", inEnglish);
    row("LANG=en_US.UTF-8 LANGUAGE=es:de", inSpanish);
    row("LANG=es_ES.UTF-8 LANGUAGE=de_CH:es", inGerman);
    row("LANG=de_DE.UTF-8 LANGUAGE=xx:es", inSpanish);
    row("LANG=de_DE.UTF-8 LANGUAGE=en:es", inEnglish);
    row("LANG=de_DE.UTF-8 LANGUAGE=xx", inEnglish);
    row("LANG=de_DE.UTF-8 LANGUAGE=", inGerman);
    row("LC_ALL=C LANGUAGE=de", inEnglish);
    row("LANGUAGE=de", inEnglish);
}

void TestLanguages::followsTheEnvironment()
{
    QFETCH(QByteArray, heading);
    ClientProcess client;
    setLocale(client, QTest::currentDataTag());
    const auto outcome = client.run({text("--help")});
    QCOMPARE(outcome.output.left(outcome.output.indexOf('\n') + 1), heading);
    QCOMPARE(outcome.errors, QByteArray());
}

void TestLanguages::helps()
{
    ClientProcess client;
    setLocale(client, locale(german));
    const QByteArray overview = client.run({text("--help")}).output;
    QVERIFY2(overview.contains("\nBefehle („korvasync BEFEHL --help“ zeigt mehr):\n"
                               "  list          Listet Nachrichten auf, die ältesten zuerst.\n"),
             overview);
    QVERIFY2(overview.contains("\nOptionen:\n  --store <DIR> "), overview);
    QVERIFY2(overview.endsWith("141 die\nAusgabe hat keinen Leser mehr.\n"), overview);
    setLocale(client, locale(spanish));
    QCOMPARE(
        client.run({text("calls"), text("wipe"), text("--help")}).output,
        QByteArray("Uso: korvasync [OPCIONES] calls wipe\n"
                   "Borra todas las llamadas.\n"
                   "\n"
                   "Opciones:\n"
                   "  --yes          No preguntar.\n"
                   "  --store <DIR>  Carpeta del almacén (predeterminado: $KORVASYNC_STORE; si "
                   "no,\n"
                   "                 korvasync en la carpeta de datos).\n"
                   "  -o <FORMAT>    Formato de salida: text (predeterminado), ndjson.\n"
                   "  -n, --dry-run  Mostrar qué pasaría, sin escribir nada.\n"
                   "  -q             Sin resumen; -qq: tampoco avisos.\n"
                   "  -v             Mostrar los mensajes de depuración de la biblioteca, con\n"
                   "                 números y textos.\n"
                   "  --timeout <S>  Segundos que se espera una respuesta del almacén, hasta\n"
                   "                 1000000 (predeterminado: 60).\n"
                   "  -h, --help     Esta ayuda.\n"
                   "  --version      La versión.\n"
                   "\n"
                   "Ejemplo:\n"
                   "  korvasync calls wipe --dry-run\n"
                   "\n"
                   "Códigos de salida: 0 borradas, 1 algunas no, 2 uso incorrecto, 3 no se "
                   "puede\n"
                   "escribir en el almacén, 5 no respondió.\n"));
}

void TestLanguages::keepsToTheWidthOfATerminal()
{
    for (const char *name : {german, spanish}) {
        ClientProcess client;
        setLocale(client, locale(name));
        for (const char *verb :
             {"", "list ", "show ", "add ", "modify ", "delete ", "calls list ", "calls add ",
              "calls wipe ", "send ", "stats ", "numbers ", "dups ", "verify "}) {
            const QStringList arguments = (text(verb) + text("--help")).split(QLatin1Char(' '));
            const QString help = QString::fromUtf8(client.run(arguments).output);
            QVERIFY2(!help.isEmpty(), verb);
            for (const QString &line : help.split(QLatin1Char('\n')))
                QVERIFY2(line.size() <= 80, qPrintable(line));
        }
    }
}

void TestLanguages::translatesErrors_data()
{
    QTest::addColumn<QByteArray>("inGerman");
    QTest::addColumn<QByteArray>("inSpanish");
    const auto row = [](const char *line, const char *inGerman, const char *inSpanish) {
        QTest::newRow(line) << QByteArray(inGerman) << QByteArray(inSpanish);
    };
    row("list --frob", "Unbekannte Option „frob“; siehe korvasync list --help",
        "Opción desconocida «frob»; consulta korvasync list --help");
    row("show x", "x ist keine ID; „korvasync list“ zeigt sie",
        "x no es un id; «korvasync list» los muestra");
    row("modify 1 %1.vmg",
        "%1.vmg ist nicht lesbar: Datei oder Ordner nicht gefunden; eine lesbare Datei nennen",
        "no se puede leer %1.vmg: No existe el archivo o la carpeta; indica un archivo que puedas "
        "leer");
    row("--store / list",
        "/ ist kein Speicher und nicht leer: mit --store einen anderen Ort nennen",
        "/ no es un almacén ni está vacío: indica otro lugar con --store");
}

void TestLanguages::translatesErrors()
{
    QFETCH(QByteArray, inGerman);
    QFETCH(QByteArray, inSpanish);
    const QStringList arguments = text(QTest::currentDataTag()).split(QLatin1Char(' '));
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    setLocale(client, locale(german));
    QCOMPARE(client.run(arguments).errors, "korvasync: " + inGerman + '\n');
    setLocale(client, locale(spanish));
    QCOMPARE(client.run(arguments).errors, "korvasync: " + inSpanish + '\n');
}

void TestLanguages::translatesWhatIsRefused()
{
    ClientProcess client;
    setLocale(client, locale(german));
    const auto first = client.run({text("add")}, hello + draft);
    QCOMPARE(first.output,
             QByteArray("added  1  -:1\n"
                        "refused  -:16  sms-draft: ein Entwurf, und Entwürfe lassen sich nicht "
                        "schreiben\n"
                        "2 gelesen, 1 hinzugefügt, 0 vorhanden, 1 abgelehnt, 0 gescheitert\n"));
    QCOMPARE(first.errors,
             QByteArray("korvasync: 1 nicht erledigt (sms-draft): ein Entwurf, und Entwürfe lassen "
                        "sich nicht schreiben\n"));
    setLocale(client, locale(spanish));
    const auto second = client.run({text("add")}, hello + "BEGIN:VNOTE\r\nEND:VNOTE\r\n");
    QCOMPARE(second.output,
             QByteArray("present  1  -:1\n"
                        "refused  -:16  foreign-object: no es un mensaje de texto, sino un objeto "
                        "que empieza por BEGIN:VNOTE\n"
                        "2 leídos, 0 añadidos, 1 presente, 1 rechazado, 0 fallidos\n"));
}

void TestLanguages::translatesWhatIsWrongWithAMessage_data()
{
    QTest::addColumn<QByteArray>("refused");
    QTest::newRow("C") << QByteArray(
        "refused  -:1  sms-parse: BEGIN:VMSG is missing\n"
        "refused  -:3  sms-parse: cut in the header, behind line 4\n"
        "refused  -:5  sms-parse: BEGIN:VBODY is missing above line 7\n"
        "refused  -:8  sms-parse: END:VBODY is missing; BEGIN:VBODY is in line 9\n"
        "refused  -:11  sms-parse: END:VBODY is followed by line 15, which is neither END:VENV nor "
        "END:VMSG\n");
    QTest::newRow(german) << QByteArray(
        "refused  -:1  sms-parse: BEGIN:VMSG fehlt\n"
        "refused  -:3  sms-parse: im Kopf abgeschnitten, hinter Zeile 4\n"
        "refused  -:5  sms-parse: BEGIN:VBODY fehlt vor Zeile 7\n"
        "refused  -:8  sms-parse: END:VBODY fehlt; BEGIN:VBODY steht in Zeile 9\n"
        "refused  -:11  sms-parse: auf END:VBODY folgt Zeile 15, die weder END:VENV noch END:VMSG "
        "ist\n");
    QTest::newRow(spanish) << QByteArray(
        "refused  -:1  sms-parse: falta BEGIN:VMSG\n"
        "refused  -:3  sms-parse: cortado en la cabecera, tras la línea 4\n"
        "refused  -:5  sms-parse: falta BEGIN:VBODY antes de la línea 7\n"
        "refused  -:8  sms-parse: falta END:VBODY; BEGIN:VBODY está en la línea 9\n"
        "refused  -:11  sms-parse: a END:VBODY le sigue la línea 15, que no es END:VENV ni "
        "END:VMSG\n");
}

void TestLanguages::translatesWhatIsWrongWithAMessage()
{
    QFETCH(QByteArray, refused);
    ClientProcess client;
    setLocale(client, locale(QTest::currentDataTag()));
    const auto outcome =
        client.run({text("add"), text("-qq")},
                   "END:VBODY\nEND:VMSG\n"
                   "BEGIN:VMSG\nVERSION:1.1\n"
                   "BEGIN:VMSG\nBEGIN:VENV\nEND:VENV\n"
                   "BEGIN:VMSG\nBEGIN:VBODY\nHello\n"
                   "BEGIN:VMSG\nBEGIN:VBODY\nHello\nEND:VBODY\nX-ABC:1\nEND:VMSG\n");
    QCOMPARE(outcome.output, refused);
    QCOMPARE(outcome.exitCode, 1);
}

void TestLanguages::translatesTables()
{
    ClientProcess client;
    client.fill(hello);
    setLocale(client, locale(german));
    QVERIFY(client.run({text("stats")})
                .output.startsWith("gesamt        Nachrichten   ungelesen\n"
                                   "                        1           0\n"
                                   "\n"
                                   "Ordner        Nachrichten   ungelesen\n"
                                   "inbox                   1           0\n"));
    QCOMPARE(client.run({text("show"), text("-o"), text("text"), text("1")}).output,
             QByteArray("ID:      1\n"
                        "Ordner:  inbox\n"
                        "Nummer:  +15550100\n"
                        "Zeit:    2010-11-03T14:25:30Z\n"
                        "gelesen: ja\n"
                        "\n"
                        "Hello\n"
                        "\n"));
}

void TestLanguages::asksAndUnderstands_data()
{
    QTest::addColumn<QByteArray>("typed");
    QTest::addColumn<QByteArray>("told");
    QTest::addColumn<QByteArray>("output");
    const auto row = [](const char *locale, const char *typed, const char *told,
                        const char *output) {
        QTest::addRow("%s %s", locale, typed)
            << QByteArray(typed) << QByteArray(told) << QByteArray(output);
    };
    const char *const inGerman = "1 Nachricht löschen? [j/N] ";
    const char *const inSpanish = "¿Borrar 1 mensaje? [s/N] ";
    const char *const deletedInGerman =
        "deleted  1\n1 gelesen, 1 gelöscht, 0 abgelehnt, 0 gescheitert\n";
    const char *const deletedInSpanish =
        "deleted  1\n1 leído, 1 borrado, 0 rechazados, 0 fallidos\n";
    row(german, "j", inGerman, deletedInGerman);
    row(german, "J", inGerman, deletedInGerman);
    row(german, "y", inGerman, deletedInGerman);
    const char *const leftInGerman =
        "1 Nachricht löschen? [j/N] korvasync: es wurde nichts gelöscht\n";
    row(german, "s", leftInGerman, "");
    row(german, "n", leftInGerman, "");
    row(spanish, "s", inSpanish, deletedInSpanish);
    row(spanish, "j", "¿Borrar 1 mensaje? [s/N] korvasync: no se borró nada\n", "");
    row("C", "j", "Delete 1 message(s)? [y/N] korvasync: nothing was deleted\n", "");
}

void TestLanguages::asksAndUnderstands()
{
    QFETCH(QByteArray, typed);
    QFETCH(QByteArray, told);
    QFETCH(QByteArray, output);
    ClientProcess client;
    client.fill(hello);
    setLocale(client, locale(QByteArray(QTest::currentDataTag()).split(' ').first()));
    const auto outcome = client.runAtTerminal({text("delete"), text("1")}, typed + '\n');
    QCOMPARE(outcome.errors, told);
    QCOMPARE(outcome.output, output);
}

void TestLanguages::leavesWhatScriptsReadAlone_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::newRow("list") << QByteArray("1  2010-11-03T14:25:30Z  inbox      +15550100  Hello\n");
    QTest::newRow("--version") << QByteArray("korvasync 1.0.0\n");
    QTest::newRow("-o ndjson delete --yes 9")
        << QByteArray("{\"ref\":0,\"status\":\"refused\",\"id\":9,\"code\":\"sms-bad-id\","
                      "\"detail\":\"no message has this id\"}\n"
                      "{\"summary\":{\"read\":1,\"deleted\":0,\"refused\":1,\"failed\":0}}\n");
    QTest::newRow("-o ndjson add none.vmg note.vmg")
        << QByteArray("{\"ref\":0,\"src\":\"none.vmg\",\"status\":\"refused\","
                      "\"code\":\"unreadable\",\"detail\":\"No such file or directory\"}\n"
                      "{\"ref\":1,\"src\":\"note.vmg:1\",\"status\":\"refused\","
                      "\"code\":\"foreign-object\",\"detail\":\"not a text message but an object "
                      "that begins with BEGIN:VNOTE\"}\n"
                      "{\"summary\":{\"read\":2,\"added\":0,\"present\":0,\"refused\":2,"
                      "\"failed\":0}}\n");
    QTest::newRow("-o ndjson stats --since 2024-01-01")
        << QByteArray("{\"of\":\"messages\",\"by\":\"total\",\"count\":0,\"unread\":0}\n"
                      "{\"of\":\"calls\",\"by\":\"total\",\"count\":0,\"seconds\":0}\n");
}

void TestLanguages::leavesWhatScriptsReadAlone()
{
    QFETCH(QByteArray, output);
    const QStringList arguments = text(QTest::currentDataTag()).split(QLatin1Char(' '));
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    client.fill(hello);
    client.write(text("note.vmg"), "BEGIN:VNOTE\r\nEND:VNOTE\r\n");
    for (const char *name : {"C", german, spanish}) {
        setLocale(client, locale(name));
        QCOMPARE(client.run(arguments).output, output);
    }
    setLocale(client, "LANG=de_DE.UTF-8 LANGUAGE=es");
    QCOMPARE(client.run(arguments).output, output);
}

void TestLanguages::keepsTheRejectsInEnglish()
{
    ClientProcess client;
    setLocale(client, locale(german));
    const QString rejects = client.filePath(text("rejects.vmsg"));
    QCOMPARE(client.run({text("add"), text("--rejects"), rejects}, draft).exitCode, 1);
    QFile file(rejects);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), "# -:1: sms-draft: a draft, and drafts cannot be written\r\n" + draft);
}

void TestLanguages::hasEveryTextWithItsPlaceholders_data()
{
    QTest::addColumn<QString>("catalogue");
    QTest::newRow("German") << text("korvasync_de.ts");
    QTest::newRow("Spanish") << text("korvasync_es.ts");
}

//! What a translation must repeat: placeholders, options, and times as they are typed.
static QStringList fixedParts(const QString &text)
{
    static const QRegularExpression part(QStringLiteral("%[0-9n]|--[a-z]+|20[0-9T:Z-]+"));
    QStringList parts;
    for (auto match = part.globalMatch(text); match.hasNext();)
        parts += match.next().captured();
    std::sort(parts.begin(), parts.end());
    return parts;
}

void TestLanguages::hasEveryTextWithItsPlaceholders()
{
    QFETCH(QString, catalogue);
    QFile file(text(TRANSLATIONS_DIRECTORY "/") + catalogue);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    int count = 0;
    QString source;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QString element = xml.name().toString();
        if (element == QLatin1String("source")) {
            source = xml.readElementText();
        } else if (element == QLatin1String("translation")) {
            QVERIFY2(!xml.attributes().hasAttribute(QLatin1String("type")), qPrintable(source));
            ++count;
        }
        const bool isForm = element == QLatin1String("numerusform");
        if (isForm || element == QLatin1String("translation")) {
            const QString translation = isForm || !source.contains(QLatin1String("%n"))
                ? xml.readElementText()
                : source; // its forms follow
            QVERIFY2(!translation.isEmpty(), qPrintable(source));
            QVERIFY2(fixedParts(translation) == fixedParts(source), qPrintable(translation));
        }
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QVERIFY(count > 200);
}

QTEST_GUILESS_MAIN(TestLanguages)
#include "tst_languages.moc"

<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Unknown option &apos;%1&apos;.</source>
        <translation>Unbekannte Option „%1“.</translation>
    </message>
    <message>
        <source>Unknown options: %1.</source>
        <translation>Unbekannte Optionen: %1.</translation>
    </message>
    <message>
        <source>Missing value after &apos;%1&apos;.</source>
        <translation>Nach „%1“ fehlt ein Wert.</translation>
    </message>
    <message>
        <source>Unexpected value after &apos;%1&apos;.</source>
        <translation>Nach „%1“ steht ein Wert, den die Option nicht nimmt.</translation>
    </message>
    <message>
        <source>Options:</source>
        <translation>Optionen:</translation>
    </message>
</context>
<context>
    <name>QSaveFile</name>
    <message>
        <source>Filename refers to a directory</source>
        <translation>Der Name ist der eines Ordners</translation>
    </message>
</context>
<context>
    <name>Text</name>
    <message numerus="yes">
        <source>Delete %n call(s)?</source>
        <translation>
            <numerusform>%n Anruf löschen?</numerusform>
            <numerusform>%n Anrufe löschen?</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 needs --yes where it cannot ask on a terminal</source>
        <translation>%1 braucht --yes, wo es nicht an einem Terminal fragen kann</translation>
    </message>
    <message>
        <source>y</source>
        <comment>the letter for yes in [y/N]; y itself is always understood</comment>
        <translation>j</translation>
    </message>
    <message numerus="yes">
        <source>Delete %n message(s)?</source>
        <translation>
            <numerusform>%n Nachricht löschen?</numerusform>
            <numerusform>%n Nachrichten löschen?</numerusform>
        </translation>
    </message>
    <message>
        <source>File name too long</source>
        <translation>Dateiname zu lang</translation>
    </message>
    <message>
        <source>Input/output error</source>
        <translation>Ein-/Ausgabefehler</translation>
    </message>
    <message>
        <source>Is a directory</source>
        <translation>Ist ein Ordner</translation>
    </message>
    <message>
        <source>No space left on device</source>
        <translation>Kein Platz mehr auf dem Gerät</translation>
    </message>
    <message>
        <source>No such file or directory</source>
        <translation>Datei oder Ordner nicht gefunden</translation>
    </message>
    <message>
        <source>Not a directory</source>
        <translation>Kein Ordner</translation>
    </message>
    <message>
        <source>Operation not permitted</source>
        <translation>Vorgang nicht erlaubt</translation>
    </message>
    <message>
        <source>Permission denied</source>
        <translation>Keine Berechtigung</translation>
    </message>
    <message>
        <source>Read-only file system</source>
        <translation>Dateisystem ist nur lesbar</translation>
    </message>
    <message>
        <source>Too many levels of symbolic links</source>
        <translation>Zu viele Ebenen symbolischer Links</translation>
    </message>
    <message>
        <source>a voice mail, which is no call</source>
        <translation>eine Nachricht der Mailbox, kein Anruf</translation>
    </message>
    <message>
        <source>a call that was answered on another device</source>
        <translation>ein Anruf, der auf einem anderen Gerät angenommen wurde</translation>
    </message>
    <message>
        <source>not a whole call element</source>
        <translation>kein vollständiges call-Element</translation>
    </message>
    <message>
        <source>a value with a colon</source>
        <translation>ein Wert mit Doppelpunkt</translation>
    </message>
    <message>
        <source>a line that an entry does not have</source>
        <translation>eine Zeile, die in keinen Eintrag gehört</translation>
    </message>
    <message>
        <source>the beginning is missing</source>
        <translation>der Anfang fehlt</translation>
    </message>
    <message>
        <source>the end is missing</source>
        <translation>das Ende fehlt</translation>
    </message>
    <message>
        <source>a number with unprintable characters</source>
        <translation>eine Nummer mit nicht druckbaren Zeichen</translation>
    </message>
    <message>
        <source>a duration that is no count of seconds</source>
        <translation>eine Dauer, die keine Zahl von Sekunden ist</translation>
    </message>
    <message>
        <source>a duration that cannot be</source>
        <translation>eine unmögliche Dauer</translation>
    </message>
    <message>
        <source>add needs a file, a folder or - for standard input</source>
        <translation>add braucht eine Datei, einen Ordner oder - für die Standardeingabe</translation>
    </message>
    <message>
        <source>Adds messages from vMessage files (.vmg, .vmsg, .txt), and messages and calls from Android backups (.xml). A folder stands for all such files in it, at any depth.</source>
        <translation>Fügt Nachrichten aus vMessage-Dateien (.vmg, .vmsg, .txt) hinzu, und Nachrichten und Anrufe aus Android-Sicherungen (.xml). Ein Ordner steht für alle solchen Dateien darin, in jeder Tiefe.</translation>
    </message>
    <message>
        <source>Folder for messages that name none: inbox, outbox, sent or my (drafts are refused).</source>
        <translation>Ordner für Nachrichten, die keinen nennen: inbox, outbox, sent oder my (drafts werden abgelehnt).</translation>
    </message>
    <message>
        <source>Messages without a plausible time: refuse (default), or now to take the clock&apos;s.</source>
        <translation>Nachrichten ohne eine plausible Zeit: refuse (Vorgabe: ablehnen), oder now für die Zeit der Uhr.</translation>
    </message>
    <message>
        <source>Mark all messages as read.</source>
        <translation>Alle Nachrichten als gelesen hinzufügen.</translation>
    </message>
    <message>
        <source>Messages per write (default: 500, at most 1000).</source>
        <translation>Nachrichten je Schreibvorgang (Vorgabe: 500, höchstens 1000).</translation>
    </message>
    <message>
        <source>Exit codes: 0 all items are in the store, 1 some refused or failed, 2 usage, 3 the store cannot be written, 5 it gave no answer.</source>
        <translation>Exit-Codes: 0 alle Einträge sind im Speicher, 1 manche abgelehnt oder gescheitert, 2 Aufruf falsch, 3 der Speicher ist nicht beschreibbar, 5 er antwortet nicht.</translation>
    </message>
    <message>
        <source>a message, which korvasync add takes</source>
        <translation>eine Nachricht; die nimmt korvasync add</translation>
    </message>
    <message>
        <source>no call but an object that begins with %1</source>
        <translation>kein Anruf, sondern ein Objekt, das mit %1 beginnt</translation>
    </message>
    <message>
        <source>not tried, as the store did not take the messages</source>
        <translation>nicht versucht, da der Speicher die Nachrichten nicht angenommen hat</translation>
    </message>
    <message>
        <source>not a whole sms element</source>
        <translation>kein vollständiges sms-Element</translation>
    </message>
    <message>
        <source>a call, which korvasync calls add takes</source>
        <translation>ein Anruf; den nimmt korvasync calls add</translation>
    </message>
    <message>
        <source>not a text message but an object that begins with %1</source>
        <translation>keine SMS, sondern ein Objekt, das mit %1 beginnt</translation>
    </message>
    <message>
        <source>an e-mail, not a text message</source>
        <translation>eine E-Mail, keine SMS</translation>
    </message>
    <message>
        <source>Items that are in the store already: skip (default), add or fail.</source>
        <translation>Einträge, die schon im Speicher sind: skip (Vorgabe: auslassen), add (hinzufügen) oder fail (ablehnen).</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2; name another with --rejects</source>
        <translation>%1 ist nicht beschreibbar: %2; mit --rejects eine andere Datei nennen</translation>
    </message>
    <message>
        <source>the input was not read to its end; add it again</source>
        <translation>die Eingabe wurde nicht bis zum Ende gelesen; noch einmal hinzufügen</translation>
    </message>
    <message>
        <source>%1 takes no arguments</source>
        <translation>%1 nimmt keine Argumente</translation>
    </message>
    <message>
        <source>calls add needs a file or - for standard input</source>
        <translation>calls add braucht eine Datei oder - für die Standardeingabe</translation>
    </message>
    <message numerus="yes">
        <source>would delete %n call(s)</source>
        <translation>
            <numerusform>%n Anruf würde gelöscht</numerusform>
            <numerusform>%n Anrufe würden gelöscht</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n call(s) deleted</source>
        <translation>
            <numerusform>%n Anruf gelöscht</numerusform>
            <numerusform>%n Anrufe gelöscht</numerusform>
        </translation>
    </message>
    <message>
        <source>Lists calls by their start, oldest first.</source>
        <translation>Listet Anrufe nach ihrem Beginn auf, die ältesten zuerst.</translation>
    </message>
    <message>
        <source>Only incoming, outgoing or missed calls.</source>
        <translation>Nur eingegangene (in), ausgegangene (out) oder verpasste Anrufe (missed).</translation>
    </message>
    <message>
        <source>&quot;korvasync calls&quot; alone lists as well.

Other actions: &quot;calls add&quot; and &quot;calls wipe&quot;, each with its own --help.</source>
        <translation>Auch „korvasync calls“ allein listet auf.

Weitere Aktionen: „calls add“ und „calls wipe“, jede mit eigenem --help.</translation>
    </message>
    <message>
        <source>Exit codes: 0 listed, 2 usage, 3 the store cannot be read, 5 it gave no answer.</source>
        <translation>Exit-Codes: 0 aufgelistet, 2 Aufruf falsch, 3 der Speicher ist nicht lesbar, 5 er antwortet nicht.</translation>
    </message>
    <message>
        <source>Adds calls from call-history entries and Android backups.</source>
        <translation>Fügt Anrufe aus Einträgen der Anrufliste und aus Android-Sicherungen hinzu.</translation>
    </message>
    <message>
        <source>Deletes all calls.</source>
        <translation>Löscht alle Anrufe.</translation>
    </message>
    <message>
        <source>Do not ask.</source>
        <translation>Nicht nachfragen.</translation>
    </message>
    <message>
        <source>Exit codes: 0 deleted, 1 some were not, 2 usage, 3 the store cannot be written, 5 it gave no answer.</source>
        <translation>Exit-Codes: 0 gelöscht, 1 manche nicht, 2 Aufruf falsch, 3 der Speicher ist nicht beschreibbar, 5 er antwortet nicht.</translation>
    </message>
    <message>
        <source>Lists the call log, adds to it, or deletes all of it.</source>
        <translation>Zeigt die Anrufliste, ergänzt sie oder löscht sie ganz.</translation>
    </message>
    <message>
        <source>delete needs an id; &quot;korvasync list&quot; shows them</source>
        <translation>delete braucht eine ID; „korvasync list“ zeigt sie</translation>
    </message>
    <message>
        <source>Deletes messages by id; - reads ids from standard input.</source>
        <translation>Löscht Nachrichten nach ID; - liest IDs von der Standardeingabe.</translation>
    </message>
    <message>
        <source>Exit codes: 0 deleted, 1 some were not, 2 usage, 3 the store cannot be written, 4 an id was not found, 5 it gave no answer.</source>
        <translation>Exit-Codes: 0 gelöscht, 1 manche nicht, 2 Aufruf falsch, 3 der Speicher ist nicht beschreibbar, 4 eine ID wurde nicht gefunden, 5 der Speicher antwortet nicht.</translation>
    </message>
    <message numerus="yes">
        <source>%n group(s), %1 surplus</source>
        <translation>
            <numerusform>%n Gruppe, %1 überzählig</numerusform>
            <numerusform>%n Gruppen, %1 überzählig</numerusform>
        </translation>
    </message>
    <message>
        <source>Lists equal messages in groups, or deletes all but one of each group.</source>
        <translation>Listet gleiche Nachrichten in Gruppen auf oder löscht aus jeder Gruppe alle bis auf eine.</translation>
    </message>
    <message>
        <source>Delete all but one of each group.</source>
        <translation>Aus jeder Gruppe alle bis auf eine löschen.</translation>
    </message>
    <message>
        <source>Which one stays: oldest (default), the one added first, or newest.</source>
        <translation>Welche bleibt: oldest (Vorgabe), die zuerst hinzugefügte, oder newest, die zuletzt hinzugefügte.</translation>
    </message>
    <message>
        <source>Messages are equal by the rule of &quot;korvasync add&quot;: the same folder, number (its last 7 digits), second and text. A text that really was sent twice within a second is in a group as well, so look at the list first.</source>
        <translation>Nachrichten sind gleich nach der Regel von „korvasync add“: gleicher Ordner, gleiche Nummer (ihre letzten 7 Ziffern), gleiche Sekunde, gleicher Text. Auch ein Text, der wirklich zweimal in einer Sekunde gesendet wurde, steht in einer Gruppe: zuerst die Liste ansehen.</translation>
    </message>
    <message>
        <source>Exit codes: 0 listed, or all deleted, 1 some were not deleted, 2 usage, 3 the store cannot be read or written, 4 some were gone already, 5 it gave no answer.</source>
        <translation>Exit-Codes: 0 aufgelistet oder alle gelöscht, 1 manche nicht gelöscht, 2 Aufruf falsch, 3 der Speicher ist nicht les- oder beschreibbar, 4 manche waren schon weg, 5 der Speicher antwortet nicht.</translation>
    </message>
    <message>
        <source>Example:</source>
        <translation>Beispiel:</translation>
    </message>
    <message>
        <source>Examples:</source>
        <translation>Beispiele:</translation>
    </message>
    <message>
        <source>Usage: korvasync [OPTIONS] COMMAND [ARGUMENTS]</source>
        <translation>Aufruf: korvasync [OPTIONEN] BEFEHL [ARGUMENTE]</translation>
    </message>
    <message>
        <source>Reads and writes the text messages and calls of a phone&apos;s store.</source>
        <translation>Liest und schreibt die SMS und Anrufe im Speicher eines Telefons.</translation>
    </message>
    <message>
        <source>Commands (&quot;korvasync COMMAND --help&quot; shows more):</source>
        <translation>Befehle („korvasync BEFEHL --help“ zeigt mehr):</translation>
    </message>
    <message>
        <source>Exit codes: 0 all done, 1 some items refused or failed and the rest done, 2 usage, 3 the store cannot be used, 4 an id was not found, 5 the store gave no answer in time, 8 not sent, 9 not known whether sent, 129, 130 and 143 interrupted, 141 the reader of the output has gone.</source>
        <translation>Exit-Codes: 0 alles erledigt, 1 manches abgelehnt oder gescheitert und der Rest erledigt, 2 Aufruf falsch, 3 der Speicher ist nicht benutzbar, 4 eine ID wurde nicht gefunden, 5 der Speicher hat nicht rechtzeitig geantwortet, 8 nicht gesendet, 9 unbekannt, ob gesendet, 129, 130 und 143 unterbrochen, 141 die Ausgabe hat keinen Leser mehr.</translation>
    </message>
    <message>
        <source>Usage: korvasync [OPTIONS] %1</source>
        <translation>Aufruf: korvasync [OPTIONEN] %1</translation>
    </message>
    <message>
        <source>Form of the files: auto (default: told by their content), %1 or android-xml.</source>
        <translation>Form der Dateien: auto (Vorgabe: am Inhalt erkannt), %1 oder android-xml.</translation>
    </message>
    <message>
        <source>Time zone for times without one, e.g. Europe/Helsinki (default: the system&apos;s).</source>
        <translation>Zeitzone für Zeiten ohne eine, z. B. Europe/Helsinki (Vorgabe: die des Systems).</translation>
    </message>
    <message>
        <source>%1 is empty</source>
        <translation>%1 ist leer</translation>
    </message>
    <message>
        <source>not an Android backup, as --from says</source>
        <translation>keine Android-Sicherung, wie --from sagt</translation>
    </message>
    <message>
        <source>longer than 32 MiB, so not kept</source>
        <translation>länger als 32 MiB, daher nicht aufgehoben</translation>
    </message>
    <message>
        <source>the file is cut off here, so some may be missing</source>
        <translation>die Datei ist hier abgeschnitten, es kann also etwas fehlen</translation>
    </message>
    <message>
        <source>--folder is inbox, outbox, drafts, sent, my or all</source>
        <translation>--folder ist inbox, outbox, drafts, sent, my oder all</translation>
    </message>
    <message>
        <source>--grep is no regular expression: %1</source>
        <translation>--grep ist kein regulärer Ausdruck: %1</translation>
    </message>
    <message>
        <source>list takes no arguments; --number and --grep look for messages</source>
        <translation>list nimmt keine Argumente; --number und --grep suchen Nachrichten</translation>
    </message>
    <message>
        <source>--ids and --count exclude each other</source>
        <translation>--ids und --count schließen einander aus</translation>
    </message>
    <message>
        <source>--%1 and -o %2 exclude each other</source>
        <translation>--%1 und -o %2 schließen einander aus</translation>
    </message>
    <message numerus="yes">
        <source>%n not listed, as --grep is too hard to decide for them; a simpler expression is without repeats in repeats</source>
        <translation>
            <numerusform>%n nicht aufgelistet, da --grep für diese Nachricht zu schwer zu entscheiden ist; einfacher ist ein Ausdruck ohne Wiederholungen in Wiederholungen</numerusform>
            <numerusform>%n nicht aufgelistet, da --grep für sie zu schwer zu entscheiden ist; einfacher ist ein Ausdruck ohne Wiederholungen in Wiederholungen</numerusform>
        </translation>
    </message>
    <message>
        <source>Lists messages, oldest first.</source>
        <translation>Listet Nachrichten auf, die ältesten zuerst.</translation>
    </message>
    <message>
        <source>inbox, outbox, drafts, sent, my or all (default).</source>
        <translation>inbox, outbox, drafts, sent, my oder all (Vorgabe).</translation>
    </message>
    <message>
        <source>Added or changed after this time.</source>
        <translation>Nach dieser Zeit hinzugefügt oder geändert.</translation>
    </message>
    <message>
        <source>With a text that matches this regular expression.</source>
        <translation>Deren Text zu diesem regulären Ausdruck passt.</translation>
    </message>
    <message>
        <source>Only the newest N.</source>
        <translation>Nur die neuesten N.</translation>
    </message>
    <message>
        <source>Print only the ids.</source>
        <translation>Nur die IDs ausgeben.</translation>
    </message>
    <message>
        <source>Print only how many there are.</source>
        <translation>Nur ihre Anzahl ausgeben.</translation>
    </message>
    <message>
        <source>Exit codes: 0 listed, 1 --grep could not be decided for some, 2 usage, 3 the store cannot be read, 5 it gave no answer.</source>
        <translation>Exit-Codes: 0 aufgelistet, 1 --grep war für manche nicht zu entscheiden, 2 Aufruf falsch, 3 der Speicher ist nicht lesbar, 5 er antwortet nicht.</translation>
    </message>
    <message>
        <source>the number has no messages yet; add one first</source>
        <translation>zu der Nummer gibt es noch keine Nachrichten; zuerst eine hinzufügen</translation>
    </message>
    <message>
        <source>modify needs an id and a file</source>
        <translation>modify braucht eine ID und eine Datei</translation>
    </message>
    <message>
        <source>The other party must have a conversation. A dry run looks for messages instead: it refuses a party whose messages have all been deleted, which modify itself would take.</source>
        <translation>Die Gegenseite muss schon eine Unterhaltung haben. Ein Probelauf sucht stattdessen nach Nachrichten: Wurden alle einer Gegenseite gelöscht, lehnt er sie ab, obwohl modify selbst sie annähme.</translation>
    </message>
    <message>
        <source>Exit codes: 0 changed, 1 refused or failed, 2 usage, 3 the store cannot be written, 4 the id was not found, 5 it gave no answer.</source>
        <translation>Exit-Codes: 0 geändert, 1 abgelehnt oder gescheitert, 2 Aufruf falsch, 3 der Speicher ist nicht beschreibbar, 4 die ID wurde nicht gefunden, 5 der Speicher antwortet nicht.</translation>
    </message>
    <message>
        <source>different numbers with this end share a conversation</source>
        <translation>verschiedene Nummern mit diesem Ende teilen eine Unterhaltung</translation>
    </message>
    <message>
        <source>others end with it and can get its messages</source>
        <translation>andere enden damit und können ihre Nachrichten bekommen</translation>
    </message>
    <message>
        <source>spellings of one number share a conversation</source>
        <translation>Schreibweisen einer Nummer teilen eine Unterhaltung</translation>
    </message>
    <message numerus="yes">
        <source>%n numbers</source>
        <translation>
            <numerusform>%n Nummer</numerusform>
            <numerusform>%n Nummern</numerusform>
        </translation>
    </message>
    <message>
        <source>Shows which numbers share a conversation, and which of them should not.</source>
        <translation>Zeigt, welche Nummern eine Unterhaltung teilen und welche davon es nicht sollten.</translation>
    </message>
    <message>
        <source>Exit codes: 0 done, with or without findings, 2 usage, 3 the store cannot be read, 5 it gave no answer.</source>
        <translation>Exit-Codes: 0 erledigt, mit oder ohne Befund, 2 Aufruf falsch, 3 der Speicher ist nicht lesbar, 5 er antwortet nicht.</translation>
    </message>
    <message>
        <source>the message was not sent, as the session bus does not answer</source>
        <translation>die Nachricht wurde nicht gesendet, da der Sitzungsbus nicht antwortet</translation>
    </message>
    <message>
        <source>the message was not sent, as another client sends or adds on the store %1; wait for it, or give it more with --timeout</source>
        <translation>die Nachricht wurde nicht gesendet, da ein anderer Client am Speicher %1 sendet oder hinzufügt; auf ihn warten oder ihm mit --timeout mehr Zeit geben</translation>
    </message>
    <message>
        <source>interrupted before the message was sent</source>
        <translation>unterbrochen, bevor die Nachricht gesendet wurde</translation>
    </message>
    <message>
        <source>the message was not sent, as there is no session bus; run it in a session, or under dbus-run-session</source>
        <translation>die Nachricht wurde nicht gesendet, da es keinen Sitzungsbus gibt; in einer Sitzung starten oder mit dbus-run-session</translation>
    </message>
    <message>
        <source>the message was not sent, as it cannot be read</source>
        <translation>die Nachricht wurde nicht gesendet, da sie nicht lesbar ist</translation>
    </message>
    <message>
        <source>the message was not sent and stands in the outbox as %1</source>
        <translation>die Nachricht wurde nicht gesendet und steht als %1 im Ausgang (outbox)</translation>
    </message>
    <message>
        <source>it is not known whether the message was sent; do not repeat it blindly</source>
        <translation>es ist nicht bekannt, ob die Nachricht gesendet wurde; nicht blind wiederholen</translation>
    </message>
    <message>
        <source>would be sent to %1: %2</source>
        <translation>würde an %1 gesendet: %2</translation>
    </message>
    <message>
        <source>number and text are not UTF-8; nothing was sent</source>
        <translation>Nummer und Text sind nicht in UTF-8; nichts wurde gesendet</translation>
    </message>
    <message>
        <source>not sent (%1): %2</source>
        <translation>nicht gesendet (%1): %2</translation>
    </message>
    <message>
        <source>there is no text to send; give one behind the number</source>
        <translation>es gibt keinen Text zu senden; einen hinter der Nummer angeben</translation>
    </message>
    <message>
        <source>a message cannot carry this number or text; leave control characters out</source>
        <translation>eine Nachricht kann diese Nummer oder diesen Text nicht tragen; Steuerzeichen weglassen</translation>
    </message>
    <message>
        <source>Send the only message of a file to its recipient.</source>
        <translation>Die einzige Nachricht einer Datei an ihren Empfänger senden.</translation>
    </message>
    <message>
        <source>Exit codes: 0 sent, 1 refused, 2 usage, 3 the store cannot be used, 5 it gave no answer, 8 not sent, 9 not known whether sent.</source>
        <translation>Exit-Codes: 0 gesendet, 1 abgelehnt, 2 Aufruf falsch, 3 der Speicher ist nicht benutzbar, 5 er antwortet nicht, 8 nicht gesendet, 9 unbekannt, ob gesendet.</translation>
    </message>
    <message>
        <source>show needs an id; &quot;korvasync list&quot; shows them</source>
        <translation>show braucht eine ID; „korvasync list“ zeigt sie</translation>
    </message>
    <message>
        <source>there is no message %1</source>
        <translation>es gibt keine Nachricht %1</translation>
    </message>
    <message>
        <source>Shows messages by id; - reads ids from standard input.</source>
        <translation>Zeigt Nachrichten nach ID; - liest IDs von der Standardeingabe.</translation>
    </message>
    <message>
        <source>Exit codes: 0 shown, 2 usage, 3 the store cannot be read, 4 an id was not found, 5 it gave no answer.</source>
        <translation>Exit-Codes: 0 gezeigt, 2 Aufruf falsch, 3 der Speicher ist nicht lesbar, 4 eine ID wurde nicht gefunden, 5 der Speicher antwortet nicht.</translation>
    </message>
    <message>
        <source>Counts messages by folder, year (in UTC) and number, and calls by type, year and number.</source>
        <translation>Zählt Nachrichten nach Ordner, Jahr (in UTC) und Nummer und Anrufe nach Art, Jahr und Nummer.</translation>
    </message>
    <message>
        <source>The N most frequent numbers (text: 10, ndjson: all).</source>
        <translation>Die N häufigsten Nummern (text: 10, ndjson: alle).</translation>
    </message>
    <message>
        <source>Numbers whose last 7 digits are alike count as one. On a terminal each row has a bar.</source>
        <translation>Nummern mit gleichen letzten 7 Ziffern zählen als eine. Am Terminal hat jede Zeile einen Balken.</translation>
    </message>
    <message>
        <source>Exit codes: 0 counted, 2 usage, 3 the store cannot be read, 5 it gave no answer.</source>
        <translation>Exit-Codes: 0 gezählt, 2 Aufruf falsch, 3 der Speicher ist nicht lesbar, 5 er antwortet nicht.</translation>
    </message>
    <message>
        <source>the store %1 gave no answer in time; see whether another program holds it, or give it more with --timeout</source>
        <translation>der Speicher %1 hat nicht rechtzeitig geantwortet; nachsehen, ob ein anderes Programm ihn festhält, oder ihm mit --timeout mehr Zeit geben</translation>
    </message>
    <message>
        <source>the store %1 refuses the request; see that its disk has room and that you may write there</source>
        <translation>der Speicher %1 lehnt die Anfrage ab; nachsehen, ob die Platte Platz hat und Schreiben dort erlaubt ist</translation>
    </message>
    <message>
        <source>%1 is no store, and not empty: name another place with --store</source>
        <translation>%1 ist kein Speicher und nicht leer: mit --store einen anderen Ort nennen</translation>
    </message>
    <message>
        <source>the store %1 cannot be opened: %2; see whose it is, or name another with --store</source>
        <translation>der Speicher %1 lässt sich nicht öffnen: %2; nachsehen, wem er gehört, oder mit --store einen anderen nennen</translation>
    </message>
    <message>
        <source>there is no store at %1: --store names another place, and &quot;korvasync add&quot; makes one</source>
        <translation>in %1 ist kein Speicher: --store nennt einen anderen Ort, und „korvasync add“ legt einen an</translation>
    </message>
    <message>
        <source>verify needs a file, a folder or -</source>
        <translation>verify braucht eine Datei, einen Ordner oder -</translation>
    </message>
    <message>
        <source>Checks that all messages and calls of files are in the store. Adds nothing.</source>
        <translation>Prüft, ob alle Nachrichten und Anrufe aus Dateien im Speicher sind. Fügt nichts hinzu.</translation>
    </message>
    <message>
        <source>Items are read and compared as &quot;korvasync add&quot; does it; call-history entries are read as well. Each missing or refused item is listed. Give the same --from, --assume-tz and --folder as for adding.</source>
        <translation>Einträge werden gelesen und verglichen wie von „korvasync add“; auch Einträge der Anrufliste werden gelesen. Jeder fehlende oder abgelehnte Eintrag wird genannt. Dieselben --from, --assume-tz und --folder angeben wie beim Hinzufügen.</translation>
    </message>
    <message>
        <source>TZ names no zone that is known here; times without a zone are read with today&apos;s distance, %1: name a zone such as Europe/Helsinki</source>
        <translation>TZ nennt keine hier bekannte Zeitzone; Zeiten ohne Zone werden mit dem heutigen Abstand %1 gelesen: eine Zone wie Europe/Helsinki nennen</translation>
    </message>
    <message>
        <source>%1 prints %2</source>
        <translation>%1 gibt %2 aus</translation>
    </message>
    <message>
        <source>there is no command %1</source>
        <translation>es gibt keinen Befehl %1</translation>
    </message>
    <message>
        <source>no command is given</source>
        <translation>es ist kein Befehl angegeben</translation>
    </message>
    <message>
        <source>standard output cannot be written: %1; see where it goes</source>
        <translation>in die Standardausgabe lässt sich nicht schreiben: %1; nachsehen, wohin sie geht</translation>
    </message>
    <message>
        <source>not a whole vMessage</source>
        <translation>keine vollständige vMessage</translation>
    </message>
    <message>
        <source>a draft, and drafts cannot be written</source>
        <translation>ein Entwurf, und Entwürfe lassen sich nicht schreiben</translation>
    </message>
    <message>
        <source>no number of the other party</source>
        <translation>keine Nummer der Gegenseite</translation>
    </message>
    <message>
        <source>no message has this id</source>
        <translation>keine Nachricht hat diese ID</translation>
    </message>
    <message>
        <source>no known folder; --folder names one</source>
        <translation>kein bekannter Ordner; --folder nennt einen</translation>
    </message>
    <message>
        <source>no known folder; its line X-IRMC-BOX names one, such as INBOX</source>
        <translation>kein bekannter Ordner; die Zeile X-IRMC-BOX nennt einen, etwa INBOX</translation>
    </message>
    <message>
        <source>the store did not take it</source>
        <translation>der Speicher hat es nicht angenommen</translation>
    </message>
    <message>
        <source>the store did not delete it</source>
        <translation>der Speicher hat es nicht gelöscht</translation>
    </message>
    <message>
        <source>not a whole call-history entry</source>
        <translation>kein vollständiger Eintrag der Anrufliste</translation>
    </message>
    <message>
        <source>no TYPE of call that is incoming, outgoing or missed</source>
        <translation>als TYPE weder incoming noch outgoing noch missed</translation>
    </message>
    <message>
        <source>no time, or none that can be</source>
        <translation>keine oder eine unmögliche Zeit</translation>
    </message>
    <message>
        <source>no time, or none that can be; --on-bad-time now takes the time of the clock</source>
        <translation>keine oder eine unmögliche Zeit; --on-bad-time now nimmt die Zeit der Uhr</translation>
    </message>
    <message>
        <source>there already</source>
        <translation>schon da</translation>
    </message>
    <message>
        <source>more than one other party; a message can be kept for one</source>
        <translation>mehr als eine Gegenseite; eine Nachricht lässt sich nur für eine aufheben</translation>
    </message>
    <message>
        <source>a multimedia message</source>
        <translation>eine MMS</translation>
    </message>
    <message>
        <source>not a text message but another kind of object</source>
        <translation>keine SMS, sondern ein Objekt anderer Art</translation>
    </message>
    <message>
        <source>the file cannot be read</source>
        <translation>die Datei ist nicht lesbar</translation>
    </message>
    <message>
        <source>--%1 is a number from %2 to %3</source>
        <translation>--%1 ist eine Zahl von %2 bis %3</translation>
    </message>
    <message>
        <source>--%1 is one of: %2</source>
        <translation>--%1 ist eins von: %2</translation>
    </message>
    <message>
        <source>--%1 is inbox, outbox, drafts, sent or my</source>
        <translation>--%1 ist inbox, outbox, drafts, sent oder my</translation>
    </message>
    <message>
        <source>standard input cannot be read: %1; see what it comes from</source>
        <translation>die Standardeingabe ist nicht lesbar: %1; nachsehen, woher sie kommt</translation>
    </message>
    <message>
        <source>standard input is not UTF-8; convert it, with iconv for instance</source>
        <translation>die Standardeingabe ist nicht in UTF-8; umwandeln, etwa mit iconv</translation>
    </message>
    <message>
        <source>%1 is no database id; &quot;korvasync list&quot; shows them</source>
        <translation>%1 ist keine ID; „korvasync list“ zeigt sie</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2; name a file that you may read</source>
        <translation>%1 ist nicht lesbar: %2; eine lesbare Datei nennen</translation>
    </message>
    <message>
        <source>%1 takes exactly one message, and %2 has more</source>
        <translation>%1 nimmt genau eine Nachricht, und %2 hat mehrere</translation>
    </message>
    <message>
        <source>%1 takes exactly one message, and %2 has none</source>
        <translation>%1 nimmt genau eine Nachricht, und %2 hat keine</translation>
    </message>
    <message>
        <source>text, ndjson; messages: vmsg, csv, mbox, android-xml; calls: entries, android-xml</source>
        <translation>text, ndjson; Nachrichten: vmsg, csv, mbox, android-xml; Anrufe: entries, android-xml</translation>
    </message>
    <message>
        <source>%1 (default)</source>
        <translation>%1 (Vorgabe)</translation>
    </message>
    <message>
        <source>Show what would happen; write nothing.</source>
        <translation>Zeigen, was geschehen würde; nichts schreiben.</translation>
    </message>
    <message>
        <source>Show progress on stderr: auto (default: on a terminal), always or never.</source>
        <translation>Fortschritt auf stderr zeigen: auto (Vorgabe: am Terminal), always (immer) oder never (nie).</translation>
    </message>
    <message>
        <source>Folder of the store (default: $KORVASYNC_STORE, else korvasync in the data folder).</source>
        <translation>Ordner des Speichers (Vorgabe: $KORVASYNC_STORE, sonst korvasync im Datenordner).</translation>
    </message>
    <message>
        <source>Output format: %1.</source>
        <translation>Ausgabeformat: %1.</translation>
    </message>
    <message>
        <source>No summary; -qq: no warnings either.</source>
        <translation>Ohne Zusammenfassung; -qq: auch ohne Warnungen.</translation>
    </message>
    <message>
        <source>Show the library&apos;s debug messages, with numbers and texts.</source>
        <translation>Die Debug-Meldungen der Bibliothek zeigen, mit Nummern und Texten.</translation>
    </message>
    <message>
        <source>Seconds to wait for an answer from the store, up to 1000000 (default: 60).</source>
        <translation>Sekunden, die auf eine Antwort des Speichers gewartet wird, bis 1000000 (Vorgabe: 60).</translation>
    </message>
    <message>
        <source>This help.</source>
        <translation>Diese Hilfe.</translation>
    </message>
    <message>
        <source>The version.</source>
        <translation>Die Version.</translation>
    </message>
    <message>
        <source>--store names no folder</source>
        <translation>--store nennt keinen Ordner</translation>
    </message>
    <message>
        <source>-o names no format</source>
        <translation>-o nennt kein Format</translation>
    </message>
    <message>
        <source>--progress is auto, always or never</source>
        <translation>--progress ist auto, always oder never</translation>
    </message>
    <message>
        <source>--timeout is a number of seconds above 0 and up to 1000000</source>
        <translation>--timeout ist eine Zahl von Sekunden über 0 und bis 1000000</translation>
    </message>
    <message numerus="yes">
        <source>%n character(s) that XML cannot hold are replaced by U+FFFD; -o %1 keeps them</source>
        <translation>
            <numerusform>%n Zeichen, das XML nicht fassen kann, ist durch U+FFFD ersetzt; -o %1 behält es</numerusform>
            <numerusform>%n Zeichen, die XML nicht fassen kann, sind durch U+FFFD ersetzt; -o %1 behält sie</numerusform>
        </translation>
    </message>
    <message>
        <source>hidden</source>
        <comment>a number</comment>
        <translation>unterdrückt</translation>
    </message>
    <message>
        <source>total</source>
        <translation>gesamt</translation>
    </message>
    <message>
        <source>folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>type</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>year</source>
        <translation>Jahr</translation>
    </message>
    <message>
        <source>number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>calls</source>
        <translation>Anrufe</translation>
    </message>
    <message>
        <source>messages</source>
        <translation>Nachrichten</translation>
    </message>
    <message>
        <source>duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>unread</source>
        <comment>messages</comment>
        <translation>ungelesen</translation>
    </message>
    <message>
        <source>%1 (%2 of %3)</source>
        <translation>%1 (%2 von %3)</translation>
    </message>
    <message>
        <source>id:</source>
        <translation>ID:</translation>
    </message>
    <message>
        <source>folder:</source>
        <translation>Ordner:</translation>
    </message>
    <message>
        <source>number:</source>
        <translation>Nummer:</translation>
    </message>
    <message>
        <source>time:</source>
        <translation>Zeit:</translation>
    </message>
    <message>
        <source>read:</source>
        <translation>gelesen:</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nein</translation>
    </message>
    <message>
        <source>%1 done of about %2</source>
        <translation>%1 von etwa %2 erledigt</translation>
    </message>
    <message>
        <source>%1 done</source>
        <translation>%1 erledigt</translation>
    </message>
    <message>
        <source>%1 s left</source>
        <translation>noch %1 s</translation>
    </message>
    <message numerus="yes">
        <source>%n added</source>
        <translation>
            <numerusform>%n hinzugefügt</numerusform>
            <numerusform>%n hinzugefügt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n present</source>
        <translation>
            <numerusform>%n vorhanden</numerusform>
            <numerusform>%n vorhanden</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n missing</source>
        <translation>
            <numerusform>%n fehlt</numerusform>
            <numerusform>%n fehlen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n changed</source>
        <translation>
            <numerusform>%n geändert</numerusform>
            <numerusform>%n geändert</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n would delete</source>
        <translation>
            <numerusform>%n zu löschen</numerusform>
            <numerusform>%n zu löschen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n deleted</source>
        <translation>
            <numerusform>%n gelöscht</numerusform>
            <numerusform>%n gelöscht</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n refused</source>
        <translation>
            <numerusform>%n abgelehnt</numerusform>
            <numerusform>%n abgelehnt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n failed</source>
        <translation>
            <numerusform>%n gescheitert</numerusform>
            <numerusform>%n gescheitert</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n read</source>
        <translation>
            <numerusform>%n gelesen</numerusform>
            <numerusform>%n gelesen</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 not done (%2): %3</source>
        <translation>%1 nicht erledigt (%2): %3</translation>
    </message>
    <message>
        <source>no answer in time; not stored so far</source>
        <translation>keine rechtzeitige Antwort; bisher nicht gespeichert</translation>
    </message>
    <message>
        <source>not known, as the store cannot be read back</source>
        <translation>nicht bekannt, da der Speicher sich nicht zurücklesen lässt</translation>
    </message>
    <message>
        <source>stored, but with another %1</source>
        <translation>gespeichert, aber abweichend: %1</translation>
    </message>
    <message>
        <source>the store does not have it</source>
        <translation>der Speicher hat es nicht</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 und %2</translation>
    </message>
    <message>
        <source>time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>read status</source>
        <translation>Lesestatus</translation>
    </message>
    <message>
        <source>text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>clients that write at the same time cannot be told to wait here (%1); run one after the other</source>
        <translation>Clients, die gleichzeitig schreiben, können hier nicht aufeinander warten (%1); einen nach dem anderen starten</translation>
    </message>
    <message>
        <source>%1; see %2 --help</source>
        <translation>%1; siehe %2 --help</translation>
    </message>
    <message>
        <source>%1 has no action %2</source>
        <translation>%1 kennt keine Aktion %2</translation>
    </message>
    <message>
        <source>%1; it takes %2</source>
        <translation>%1; möglich: %2</translation>
    </message>
    <message>
        <source>%1 (did you mean %2?)</source>
        <translation>%1 (war %2 gemeint?)</translation>
    </message>
    <message>
        <source>signs in it are read as a pattern; others can get its messages</source>
        <translation>Zeichen darin gelten als Muster; andere können ihre Nachrichten bekommen</translation>
    </message>
    <message>
        <source>A message joins the conversation of the last 7 digits of its number, or of its alphanumeric sender. While there is none, it joins the first whose number ends with them. Findings, the doubtful ones first:
  different-numbers  perhaps two parties, whose numbers end alike
  end-of-others      a short code or sender with which longer ones end: if a
                     longer one came first, it gets the messages of the short
  pattern            a sender with a dot, ^ or $, which can match others
  spellings          one number with and without its prefix: as it should be</source>
        <translation>Eine Nachricht kommt in die Unterhaltung der letzten 7 Ziffern ihrer Nummer oder in die ihres Namens als Absender. Solange es keine gibt, kommt sie in die erste, deren Nummer damit endet. Befunde, die zweifelhaften zuerst:
  different-numbers  vielleicht zwei Gegenseiten, deren Nummern gleich enden
  end-of-others      eine Kurzwahl oder ein Name, womit längere enden: die SMS
                     kommen zur längeren, wenn deren Unterhaltung zuerst da war
  pattern            ein Name mit Punkt, ^ oder $, der zu anderen passen kann
  spellings          eine Nummer mit und ohne Vorwahl: so soll es sein</translation>
    </message>
    <message>
        <source>Collect refused and failed items in this file, to be corrected and added again.</source>
        <translation>Abgelehnte und gescheiterte Einträge in dieser Datei sammeln, um sie zu berichtigen und erneut hinzuzufügen.</translation>
    </message>
    <message>
        <source>a link of another user leads there</source>
        <translation>ein Link eines anderen Benutzers führt dorthin</translation>
    </message>
    <message>
        <source>it is not a regular file</source>
        <translation>es ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>it belongs to another user</source>
        <translation>sie gehört einem anderen Benutzer</translation>
    </message>
    <message>
        <source>%1 stays as it is, since it may hold what was neither stored nor refused; the rejects are in %2</source>
        <translation>%1 bleibt, wie es ist, da manches darin weder gespeichert noch abgelehnt sein kann; das Abgelehnte ist in %2</translation>
    </message>
    <message>
        <source>there were no messages or calls to look for; name the files that were added</source>
        <translation>es gab keine Nachrichten oder Anrufe, nach denen zu suchen wäre; die Dateien nennen, die hinzugefügt wurden</translation>
    </message>
    <message>
        <source>Exit codes: 0 all items are in the store, 1 some are missing or refused, or there was nothing to look for, 2 usage, 3 the store cannot be read, 5 it gave no answer.</source>
        <translation>Exit-Codes: 0 alle Einträge sind im Speicher, 1 manche fehlen oder wurden abgelehnt, oder es gab nichts zu suchen, 2 Aufruf falsch, 3 der Speicher ist nicht lesbar, 5 er antwortet nicht.</translation>
    </message>
    <message>
        <source>passed over: %1</source>
        <translation>übergangen: %1</translation>
    </message>
    <message numerus="yes">
        <source>%n passed over</source>
        <translation>
            <numerusform>%n übergangen</numerusform>
            <numerusform>%n übergangen</numerusform>
        </translation>
    </message>
    <message>
        <source>On a terminal the default format is text, and control characters become visible signs in every format. In files and pipes they do so only in text.</source>
        <translation>Am Terminal ist text die Voreinstellung, und Steuerzeichen werden in jedem Format zu sichtbaren Zeichen. In Dateien und Pipes geschieht das nur in text.</translation>
    </message>
    <message>
        <source>send needs number and text, as two words or on standard input with the number in the first line; or --vmessage alone</source>
        <translation>send braucht Nummer und Text, als zwei Wörter oder auf der Standardeingabe mit der Nummer in der ersten Zeile; oder allein --vmessage</translation>
    </message>
    <message>
        <source>Sends a message and prints its id. With -, the first line of standard input is the number and the rest is the text. With NUMBER -, standard input is the text.</source>
        <translation>Sendet eine Nachricht und gibt ihre ID aus. Mit - ist die erste Zeile der Standardeingabe die Nummer und der Rest der Text. Mit NUMBER - ist die Standardeingabe der Text.</translation>
    </message>
    <message>
        <source>While a command runs, all users of the machine can see the words of its command line. Scripts should give number and text on standard input.</source>
        <translation>Solange ein Befehl läuft, können alle Benutzer des Rechners die Wörter seiner Befehlszeile sehen. Skripte sollten Nummer und Text auf der Standardeingabe übergeben.</translation>
    </message>
    <message>
        <source>%1 names no time zone: %2</source>
        <translation>%1 nennt keine Zeitzone: %2</translation>
    </message>
    <message>
        <source>%1; name one such as Europe/Helsinki</source>
        <translation>%1; eine wie Europe/Helsinki nennen</translation>
    </message>
    <message>
        <source>the call log changed meanwhile, so nothing was deleted; look at it and repeat</source>
        <translation>die Anrufliste hat sich inzwischen geändert, deshalb wurde nichts gelöscht; ansehen und wiederholen</translation>
    </message>
    <message>
        <source>nothing was deleted</source>
        <translation>es wurde nichts gelöscht</translation>
    </message>
    <message>
        <source>dups takes --keep and --yes only with --delete</source>
        <translation>dups nimmt --keep und --yes nur mit --delete</translation>
    </message>
    <message>
        <source>no longer what it was when it was asked about</source>
        <translation>nicht mehr, was sie bei der Frage war</translation>
    </message>
    <message>
        <source>gone, but the store did not confirm it</source>
        <translation>fort, aber der Speicher hat es nicht bestätigt</translation>
    </message>
    <message>
        <source>the system gives this program no thread: %1; end other programs, or raise the limit of processes</source>
        <translation>das System gibt diesem Programm keinen Thread: %1; andere Programme beenden oder die Grenze für Prozesse anheben</translation>
    </message>
    <message>
        <source>BEGIN:VMSG is missing</source>
        <translation>BEGIN:VMSG fehlt</translation>
    </message>
    <message>
        <source>cut in the header, behind line %1</source>
        <translation>im Kopf abgeschnitten, hinter Zeile %1</translation>
    </message>
    <message>
        <source>BEGIN:VBODY is missing above line %1</source>
        <translation>BEGIN:VBODY fehlt vor Zeile %1</translation>
    </message>
    <message>
        <source>END:VBODY is missing; BEGIN:VBODY is in line %1</source>
        <translation>END:VBODY fehlt; BEGIN:VBODY steht in Zeile %1</translation>
    </message>
    <message>
        <source>END:VBODY is followed by line %1, which is neither END:VENV nor END:VMSG</source>
        <translation>auf END:VBODY folgt Zeile %1, die weder END:VENV noch END:VMSG ist</translation>
    </message>
    <message>
        <source>the text below line %1 is longer than 2 GiB</source>
        <translation>der Text unter Zeile %1 ist länger als 2 GiB</translation>
    </message>
    <message>
        <source>--number and --number-tail exclude each other</source>
        <translation>--number und --number-tail schließen sich aus</translation>
    </message>
    <message>
        <source>--%1 needs a number or a name</source>
        <translation>--%1 braucht eine Nummer oder einen Namen</translation>
    </message>
    <message>
        <source>Before this time.</source>
        <translation>Vor dieser Zeit.</translation>
    </message>
    <message>
        <source>To or from this number, in any spelling, or alphanumeric sender.</source>
        <translation>An oder von dieser Nummer, in jeder Schreibweise, oder diesem alphanumerischen Absender.</translation>
    </message>
    <message>
        <source>To or from any number with the same last 7 digits.</source>
        <translation>An oder von jeder Nummer mit denselben letzten 7 Ziffern.</translation>
    </message>
    <message>
        <source>Of this conversation, by its id.</source>
        <translation>Aus dieser Unterhaltung, nach ihrer Kennung.</translation>
    </message>
    <message>
        <source>Only what is unread.</source>
        <translation>Nur Ungelesenes.</translation>
    </message>
    <message>
        <source>Let --grep match upper case with lower case.</source>
        <translation>--grep unterscheidet Groß- und Kleinschreibung nicht.</translation>
    </message>
    <message>
        <source>From this time on: 2024-05-01T10:00:00Z, 2024-05-01, today, yesterday, 30m, 12h, 7d, 2w or @seconds.</source>
        <translation>Ab dieser Zeit: 2024-05-01T10:00:00Z, 2024-05-01, today (heute), yesterday (gestern), 30m, 12h, 7d, 2w oder @Sekunden.</translation>
    </message>
    <message>
        <source>Time zone of dates, e.g. Europe/Helsinki (default: the system&apos;s).</source>
        <translation>Zeitzone für Datumsangaben, z. B. Europe/Helsinki (Vorgabe: die des Systems).</translation>
    </message>
    <message>
        <source>--%1 takes 2024-05-01T10:00:00Z, 2024-05-01, today, yesterday, 30m, 12h, 7d, 2w or @seconds</source>
        <translation>--%1 nimmt 2024-05-01T10:00:00Z, 2024-05-01, today (heute), yesterday (gestern), 30m, 12h, 7d, 2w oder @Sekunden</translation>
    </message>
    <message>
        <source>the store %1 never gave this cursor, or an older copy of it was put back; start anew without one, and compare</source>
        <translation>der Speicher %1 hat diesen Cursor nie ausgegeben, oder eine ältere Kopie von ihm wurde zurückgelegt; ohne Cursor neu anfangen und vergleichen</translation>
    </message>
    <message>
        <source>changes takes one cursor at most</source>
        <translation>changes nimmt höchstens einen Cursor</translation>
    </message>
    <message>
        <source>Prints what was added, changed and deleted since a cursor.</source>
        <translation>Gibt aus, was seit einem Cursor hinzugefügt, geändert und gelöscht wurde.</translation>
    </message>
    <message>
        <source>Go on with what happens next, until interrupted.</source>
        <translation>Gibt auch aus, was danach geschieht, bis zur Unterbrechung.</translation>
    </message>
    <message>
        <source>The last line has the cursor for the next time. Without one, all that is in the store counts as added. An item comes once, as it is now, however often it was changed; of a deleted one come its kind and id. With --follow a cursor comes behind each batch.</source>
        <translation>In der letzten Zeile steht der Cursor für das nächste Mal. Ohne Cursor gilt alles im Speicher als hinzugefügt. Ein Eintrag kommt einmal, so wie er jetzt ist, wie oft er auch geändert wurde; von einem gelöschten kommen Art und Kennung. Mit --follow steht hinter jedem Schub ein Cursor.</translation>
    </message>
    <message>
        <source>Exit codes: 0 printed, 2 usage, 3 the store cannot be read or does not know the cursor, 5 it gave no answer.</source>
        <translation>Exit-Codes: 0 ausgegeben, 2 Aufruf falsch, 3 der Speicher ist nicht lesbar oder kennt den Cursor nicht, 5 er antwortet nicht.</translation>
    </message>
    <message>
        <source>--local and --%1 exclude each other</source>
        <translation>--local und --%1 schließen einander aus</translation>
    </message>
    <message>
        <source>Show times in the time zone of --assume-tz or the system&apos;s, not in UTC (text output only).</source>
        <translation>Zeiten in der Zeitzone von --assume-tz oder des Systems zeigen, nicht in UTC (nur in der Ausgabe als text).</translation>
    </message>
    <message>
        <source>Calls that began at this time or later: 2024-05-01T10:00:00Z, 2024-05-01, today, yesterday, 30m, 12h, 7d, 2w or @seconds.</source>
        <translation>Anrufe, die zu dieser Zeit oder später begannen: 2024-05-01T10:00:00Z, 2024-05-01, today (heute), yesterday (gestern), 30m, 12h, 7d, 2w oder @Sekunden.</translation>
    </message>
    <message>
        <source>Lists conversations, the newest first.</source>
        <translation>Listet Unterhaltungen auf, die neueste zuerst.</translation>
    </message>
    <message>
        <source>A line has the id, time of the newest message, number of messages, of unread ones with a star, the other party, and the first words of the newest message. Only messages that the options select are looked at. &quot;korvasync list --conversation ID&quot; lists those of one.</source>
        <translation>In einer Zeile stehen die Kennung, die Zeit der neuesten Nachricht, die Zahl der Nachrichten, die der ungelesenen mit einem Stern, die Gegenseite und die ersten Wörter der neuesten Nachricht. Es zählen nur Nachrichten, die die Optionen auswählen. &quot;korvasync list --conversation ID&quot; listet die einer Unterhaltung auf.</translation>
    </message>
    <message>
        <source>its number or text cannot be written as it is</source>
        <translation>ihre Nummer oder ihr Text lässt sich nicht unverändert schreiben</translation>
    </message>
    <message>
        <source>--read and --unread exclude each other</source>
        <translation>--read und --unread schließen einander aus</translation>
    </message>
    <message>
        <source>modify needs an id; &quot;korvasync list&quot; shows them</source>
        <translation>modify braucht eine ID; „korvasync list“ zeigt sie</translation>
    </message>
    <message>
        <source>Replaces a message with the one in a vMessage, or marks or moves messages. The time and token of a stored message stay.</source>
        <translation>Ersetzt eine Nachricht durch die einer vMessage oder markiert oder verschiebt Nachrichten. Zeit und Token gespeicherter Nachrichten bleiben.</translation>
    </message>
    <message>
        <source>Mark messages as read instead; no file is given.</source>
        <translation>Stattdessen Nachrichten als gelesen markieren; eine Datei wird nicht genannt.</translation>
    </message>
    <message>
        <source>Mark them as unread instead.</source>
        <translation>Sie stattdessen als ungelesen markieren.</translation>
    </message>
    <message>
        <source>Move them instead: inbox, outbox, sent or my. Drafts cannot be changed.</source>
        <translation>Sie stattdessen verschieben: inbox, outbox, sent oder my. Entwürfe lassen sich nicht ändern.</translation>
    </message>
    <message numerus="yes">
        <source>%n unchanged</source>
        <translation>
            <numerusform>%n unverändert</numerusform>
            <numerusform>%n unverändert</numerusform>
        </translation>
    </message>
</context>
</TS>

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
</context>
</TS>

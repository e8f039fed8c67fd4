<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es_ES" sourcelanguage="en">
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Unknown option &apos;%1&apos;.</source>
        <translation>Opción desconocida «%1».</translation>
    </message>
    <message>
        <source>Unknown options: %1.</source>
        <translation>Opciones desconocidas: %1.</translation>
    </message>
    <message>
        <source>Missing value after &apos;%1&apos;.</source>
        <translation>Falta un valor después de «%1».</translation>
    </message>
    <message>
        <source>Unexpected value after &apos;%1&apos;.</source>
        <translation>Sobra un valor después de «%1».</translation>
    </message>
</context>
<context>
    <name>QSaveFile</name>
    <message>
        <source>Filename refers to a directory</source>
        <translation>El nombre es el de una carpeta</translation>
    </message>
</context>
<context>
    <name>Text</name>
    <message numerus="yes">
        <source>Delete %n call(s)?</source>
        <translation>
            <numerusform>¿Borrar %n llamada?</numerusform>
            <numerusform>¿Borrar %n llamadas?</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 needs --yes where it cannot ask on a terminal</source>
        <translation>%1 necesita --yes donde no puede preguntar en un terminal</translation>
    </message>
    <message>
        <source>y</source>
        <comment>the letter for yes in [y/N]; y itself is always understood</comment>
        <translation>s</translation>
    </message>
    <message numerus="yes">
        <source>Delete %n message(s)?</source>
        <translation>
            <numerusform>¿Borrar %n mensaje?</numerusform>
            <numerusform>¿Borrar %n mensajes?</numerusform>
        </translation>
    </message>
    <message>
        <source>File name too long</source>
        <translation>Nombre de archivo demasiado largo</translation>
    </message>
    <message>
        <source>Input/output error</source>
        <translation>Error de entrada/salida</translation>
    </message>
    <message>
        <source>Is a directory</source>
        <translation>Es una carpeta</translation>
    </message>
    <message>
        <source>No space left on device</source>
        <translation>No queda espacio en el dispositivo</translation>
    </message>
    <message>
        <source>No such file or directory</source>
        <translation>No existe el archivo o la carpeta</translation>
    </message>
    <message>
        <source>Not a directory</source>
        <translation>No es una carpeta</translation>
    </message>
    <message>
        <source>Operation not permitted</source>
        <translation>Operación no permitida</translation>
    </message>
    <message>
        <source>Permission denied</source>
        <translation>Permiso denegado</translation>
    </message>
    <message>
        <source>Read-only file system</source>
        <translation>Sistema de archivos de solo lectura</translation>
    </message>
    <message>
        <source>Too many levels of symbolic links</source>
        <translation>Demasiados niveles de enlaces simbólicos</translation>
    </message>
</context>
</TS>

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
    <message>
        <source>Options:</source>
        <translation>Opciones:</translation>
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
    <message>
        <source>a voice mail, which is no call</source>
        <translation>un mensaje del buzón de voz, no una llamada</translation>
    </message>
    <message>
        <source>a call that was answered on another device</source>
        <translation>una llamada atendida en otro dispositivo</translation>
    </message>
    <message>
        <source>not a whole call element</source>
        <translation>no es un elemento call completo</translation>
    </message>
    <message>
        <source>a value with a colon</source>
        <translation>un valor con dos puntos</translation>
    </message>
    <message>
        <source>a line that an entry does not have</source>
        <translation>una línea ajena a estas entradas</translation>
    </message>
    <message>
        <source>the beginning is missing</source>
        <translation>falta el principio</translation>
    </message>
    <message>
        <source>the end is missing</source>
        <translation>falta el final</translation>
    </message>
    <message>
        <source>a number with unprintable characters</source>
        <translation>un número con caracteres no imprimibles</translation>
    </message>
    <message>
        <source>a duration that is no count of seconds</source>
        <translation>una duración que no es un número de segundos</translation>
    </message>
    <message>
        <source>a duration that cannot be</source>
        <translation>una duración imposible</translation>
    </message>
    <message>
        <source>add needs a file, a folder or - for standard input</source>
        <translation>add necesita un archivo, una carpeta o - para la entrada estándar</translation>
    </message>
    <message>
        <source>Adds messages from vMessage files (.vmg, .vmsg, .txt), and messages and calls from Android backups (.xml). A folder stands for all such files in it, at any depth.</source>
        <translation>Añade mensajes de archivos vMessage (.vmg, .vmsg, .txt), y mensajes y llamadas de copias de seguridad de Android (.xml). Una carpeta representa todos esos archivos que contiene, a cualquier nivel.</translation>
    </message>
    <message>
        <source>Folder for messages that name none: inbox, outbox, sent or my (drafts are refused).</source>
        <translation>Carpeta para los mensajes que no indican ninguna: inbox, outbox, sent o my (drafts se rechazan).</translation>
    </message>
    <message>
        <source>Messages without a plausible time: refuse (default), or now to take the clock&apos;s.</source>
        <translation>Mensajes sin una hora plausible: refuse (predeterminado: rechazar), o now para tomar la del reloj.</translation>
    </message>
    <message>
        <source>Mark all messages as read.</source>
        <translation>Añadir todos los mensajes como leídos.</translation>
    </message>
    <message>
        <source>Messages per write (default: 500, at most 1000).</source>
        <translation>Mensajes por escritura (predeterminado: 500, como máximo 1000).</translation>
    </message>
    <message>
        <source>Exit codes: 0 all items are in the store, 1 some refused or failed, 2 usage, 3 the store cannot be written, 5 it gave no answer.</source>
        <translation>Códigos de salida: 0 todos los elementos están en el almacén, 1 algo se rechazó o falló, 2 uso incorrecto, 3 no se puede escribir en el almacén, 5 no respondió.</translation>
    </message>
    <message>
        <source>a message, which korvasync add takes</source>
        <translation>un mensaje; de eso se encarga korvasync add</translation>
    </message>
    <message>
        <source>no call but an object that begins with %1</source>
        <translation>no es una llamada, sino un objeto que empieza por %1</translation>
    </message>
    <message>
        <source>not tried, as the store did not take the messages</source>
        <translation>no se intentó, porque el almacén no aceptó los mensajes</translation>
    </message>
    <message>
        <source>not a whole sms element</source>
        <translation>no es un elemento sms completo</translation>
    </message>
    <message>
        <source>a call, which korvasync calls add takes</source>
        <translation>una llamada; de eso se encarga korvasync calls add</translation>
    </message>
    <message>
        <source>not a text message but an object that begins with %1</source>
        <translation>no es un mensaje de texto, sino un objeto que empieza por %1</translation>
    </message>
    <message>
        <source>an e-mail, not a text message</source>
        <translation>un correo electrónico, no un mensaje de texto</translation>
    </message>
    <message>
        <source>Items that are in the store already: skip (default), add or fail.</source>
        <translation>Elementos que ya están en el almacén: skip (predeterminado: omitir), add (añadir) o fail (rechazar).</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2; name another with --rejects</source>
        <translation>no se puede escribir %1: %2; indica otro archivo con --rejects</translation>
    </message>
    <message>
        <source>the input was not read to its end; add it again</source>
        <translation>la entrada no se leyó hasta el final; añádela de nuevo</translation>
    </message>
    <message>
        <source>%1 takes no arguments</source>
        <translation>%1 no admite argumentos</translation>
    </message>
    <message>
        <source>calls add needs a file or - for standard input</source>
        <translation>calls add necesita un archivo o - para la entrada estándar</translation>
    </message>
    <message numerus="yes">
        <source>would delete %n call(s)</source>
        <translation>
            <numerusform>se borraría %n llamada</numerusform>
            <numerusform>se borrarían %n llamadas</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n call(s) deleted</source>
        <translation>
            <numerusform>%n llamada borrada</numerusform>
            <numerusform>%n llamadas borradas</numerusform>
        </translation>
    </message>
    <message>
        <source>Lists calls by their start, oldest first.</source>
        <translation>Muestra las llamadas por su comienzo, las más antiguas primero.</translation>
    </message>
    <message>
        <source>Only incoming, outgoing or missed calls.</source>
        <translation>Solo llamadas entrantes (in), salientes (out) o perdidas (missed).</translation>
    </message>
    <message>
        <source>&quot;korvasync calls&quot; alone lists as well.

Other actions: &quot;calls add&quot; and &quot;calls wipe&quot;, each with its own --help.</source>
        <translation>«korvasync calls» a secas también muestra la lista.

Otras acciones: «calls add» y «calls wipe», cada una con su --help.</translation>
    </message>
    <message>
        <source>Exit codes: 0 listed, 2 usage, 3 the store cannot be read, 5 it gave no answer.</source>
        <translation>Códigos de salida: 0 lista mostrada, 2 uso incorrecto, 3 no se puede leer el almacén, 5 no respondió.</translation>
    </message>
    <message>
        <source>Adds calls from call-history entries and Android backups.</source>
        <translation>Añade llamadas de entradas del registro de llamadas y de copias de seguridad de Android.</translation>
    </message>
    <message>
        <source>Deletes all calls.</source>
        <translation>Borra todas las llamadas.</translation>
    </message>
    <message>
        <source>Do not ask.</source>
        <translation>No preguntar.</translation>
    </message>
    <message>
        <source>Exit codes: 0 deleted, 1 some were not, 2 usage, 3 the store cannot be written, 5 it gave no answer.</source>
        <translation>Códigos de salida: 0 borradas, 1 algunas no, 2 uso incorrecto, 3 no se puede escribir en el almacén, 5 no respondió.</translation>
    </message>
    <message>
        <source>Lists the call log, adds to it, or deletes all of it.</source>
        <translation>Muestra el registro de llamadas, le añade llamadas o lo borra entero.</translation>
    </message>
    <message>
        <source>delete needs an id; &quot;korvasync list&quot; shows them</source>
        <translation>delete necesita un id; «korvasync list» los muestra</translation>
    </message>
    <message>
        <source>Deletes messages by id; - reads ids from standard input.</source>
        <translation>Borra mensajes por id; - lee los id de la entrada estándar.</translation>
    </message>
    <message>
        <source>Exit codes: 0 deleted, 1 some were not, 2 usage, 3 the store cannot be written, 4 an id was not found, 5 it gave no answer.</source>
        <translation>Códigos de salida: 0 borrados, 1 algunos no, 2 uso incorrecto, 3 no se puede escribir en el almacén, 4 no se encontró un id, 5 el almacén no respondió.</translation>
    </message>
    <message numerus="yes">
        <source>%n group(s), %1 surplus</source>
        <translation>
            <numerusform>%n grupo, %1 de más</numerusform>
            <numerusform>%n grupos, %1 de más</numerusform>
        </translation>
    </message>
    <message>
        <source>Lists equal messages in groups, or deletes all but one of each group.</source>
        <translation>Muestra los mensajes iguales por grupos, o borra todos menos uno de cada grupo.</translation>
    </message>
    <message>
        <source>Delete all but one of each group.</source>
        <translation>Borrar todos menos uno de cada grupo.</translation>
    </message>
    <message>
        <source>Which one stays: oldest (default), the one added first, or newest.</source>
        <translation>El que se queda: oldest (predeterminado), el primero que se añadió, o newest, el último.</translation>
    </message>
    <message>
        <source>Messages are equal by the rule of &quot;korvasync add&quot;: the same folder, number (its last 7 digits), second and text. A text that really was sent twice within a second is in a group as well, so look at the list first.</source>
        <translation>Los mensajes son iguales según la regla de «korvasync add»: misma carpeta, mismo número (sus últimas 7 cifras), mismo segundo y mismo texto. Un texto que de verdad se envió dos veces en un segundo también forma un grupo: mira primero la lista.</translation>
    </message>
    <message>
        <source>Exit codes: 0 listed, or all deleted, 1 some were not deleted, 2 usage, 3 the store cannot be read or written, 4 some were gone already, 5 it gave no answer.</source>
        <translation>Códigos de salida: 0 lista mostrada, o todos borrados, 1 algunos no se borraron, 2 uso incorrecto, 3 no se puede leer o escribir el almacén, 4 algunos ya no estaban, 5 el almacén no respondió.</translation>
    </message>
    <message>
        <source>Example:</source>
        <translation>Ejemplo:</translation>
    </message>
    <message>
        <source>Examples:</source>
        <translation>Ejemplos:</translation>
    </message>
    <message>
        <source>Usage: korvasync [OPTIONS] COMMAND [ARGUMENTS]</source>
        <translation>Uso: korvasync [OPCIONES] ORDEN [ARGUMENTOS]</translation>
    </message>
    <message>
        <source>Reads and writes the text messages and calls of a phone&apos;s store.</source>
        <translation>Lee y escribe los mensajes de texto y las llamadas del almacén de un teléfono.</translation>
    </message>
    <message>
        <source>Commands (&quot;korvasync COMMAND --help&quot; shows more):</source>
        <translation>Órdenes («korvasync ORDEN --help» muestra más):</translation>
    </message>
    <message>
        <source>Exit codes: 0 all done, 1 some items refused or failed and the rest done, 2 usage, 3 the store cannot be used, 4 an id was not found, 5 the store gave no answer in time, 8 not sent, 9 not known whether sent, 129, 130 and 143 interrupted, 141 the reader of the output has gone.</source>
        <translation>Códigos de salida: 0 todo hecho, 1 algo se rechazó o falló y el resto está hecho, 2 uso incorrecto, 3 no se puede usar el almacén, 4 no se encontró un id, 5 el almacén no respondió a tiempo, 8 no enviado, 9 no se sabe si se envió, 129, 130 y 143 interrumpido, 141 la salida ya no tiene lector.</translation>
    </message>
    <message>
        <source>Usage: korvasync [OPTIONS] %1</source>
        <translation>Uso: korvasync [OPCIONES] %1</translation>
    </message>
    <message>
        <source>Form of the files: auto (default: told by their content), %1 or android-xml.</source>
        <translation>Forma de los archivos: auto (predeterminado: según su contenido), %1 o android-xml.</translation>
    </message>
    <message>
        <source>Time zone for times without one, e.g. Europe/Helsinki (default: the system&apos;s).</source>
        <translation>Zona horaria para las horas sin ella, p. ej. Europe/Helsinki (predeterminado: la del sistema).</translation>
    </message>
    <message>
        <source>%1 is empty</source>
        <translation>%1 está vacío</translation>
    </message>
    <message>
        <source>not an Android backup, as --from says</source>
        <translation>no es una copia de seguridad de Android, como dice --from</translation>
    </message>
    <message>
        <source>longer than 32 MiB, so not kept</source>
        <translation>mide más de 32 MiB, así que no se conserva</translation>
    </message>
    <message>
        <source>the file is cut off here, so some may be missing</source>
        <translation>el archivo está cortado aquí, así que puede faltar algo</translation>
    </message>
    <message>
        <source>--folder is inbox, outbox, drafts, sent, my or all</source>
        <translation>--folder es inbox, outbox, drafts, sent, my o all</translation>
    </message>
    <message>
        <source>--grep is no regular expression: %1</source>
        <translation>--grep no es una expresión regular: %1</translation>
    </message>
    <message>
        <source>list takes no arguments; --number and --grep look for messages</source>
        <translation>list no admite argumentos; --number y --grep buscan mensajes</translation>
    </message>
    <message>
        <source>--ids and --count exclude each other</source>
        <translation>--ids y --count se excluyen mutuamente</translation>
    </message>
    <message>
        <source>--%1 and -o %2 exclude each other</source>
        <translation>--%1 y -o %2 se excluyen mutuamente</translation>
    </message>
    <message numerus="yes">
        <source>%n not listed, as --grep is too hard to decide for them; a simpler expression is without repeats in repeats</source>
        <translation>
            <numerusform>%n no se muestra, porque con --grep es demasiado difícil decidirlo; es más sencilla una expresión sin repeticiones dentro de repeticiones</numerusform>
            <numerusform>%n no se muestran, porque con --grep es demasiado difícil decidirlo; es más sencilla una expresión sin repeticiones dentro de repeticiones</numerusform>
        </translation>
    </message>
    <message>
        <source>Lists messages, oldest first.</source>
        <translation>Muestra la lista de mensajes, los más antiguos primero.</translation>
    </message>
    <message>
        <source>inbox, outbox, drafts, sent, my or all (default).</source>
        <translation>inbox, outbox, drafts, sent, my o all (predeterminado).</translation>
    </message>
    <message>
        <source>Added or changed after this time.</source>
        <translation>Añadidos o cambiados después de esta hora.</translation>
    </message>
    <message>
        <source>With a text that matches this regular expression.</source>
        <translation>Cuyo texto coincide con esta expresión regular.</translation>
    </message>
    <message>
        <source>Only the newest N.</source>
        <translation>Solo los N más recientes.</translation>
    </message>
    <message>
        <source>Print only the ids.</source>
        <translation>Mostrar solo los id.</translation>
    </message>
    <message>
        <source>Print only how many there are.</source>
        <translation>Mostrar solo cuántos son.</translation>
    </message>
    <message>
        <source>Exit codes: 0 listed, 1 --grep could not be decided for some, 2 usage, 3 the store cannot be read, 5 it gave no answer.</source>
        <translation>Códigos de salida: 0 lista mostrada, 1 --grep no se pudo decidir para algunos, 2 uso incorrecto, 3 no se puede leer el almacén, 5 no respondió.</translation>
    </message>
    <message>
        <source>the number has no messages yet; add one first</source>
        <translation>el número aún no tiene mensajes; añade antes uno</translation>
    </message>
    <message>
        <source>modify needs an id and a file</source>
        <translation>modify necesita un id y un archivo</translation>
    </message>
    <message>
        <source>The other party must have a conversation. A dry run looks for messages instead: it refuses a party whose messages have all been deleted, which modify itself would take.</source>
        <translation>La otra parte ya debe tener una conversación. Un ensayo busca mensajes en su lugar: si se borraron todos los de una parte, la rechaza, aunque modify mismo la aceptaría.</translation>
    </message>
    <message>
        <source>Exit codes: 0 changed, 1 refused or failed, 2 usage, 3 the store cannot be written, 4 the id was not found, 5 it gave no answer.</source>
        <translation>Códigos de salida: 0 cambiado, 1 rechazado o fallido, 2 uso incorrecto, 3 no se puede escribir en el almacén, 4 no se encontró el id, 5 el almacén no respondió.</translation>
    </message>
    <message>
        <source>different numbers with this end share a conversation</source>
        <translation>números distintos con este final comparten una conversación</translation>
    </message>
    <message>
        <source>others end with it and can get its messages</source>
        <translation>otros acaban así y pueden recibir sus mensajes</translation>
    </message>
    <message>
        <source>spellings of one number share a conversation</source>
        <translation>formas de escribir un mismo número comparten una conversación</translation>
    </message>
    <message numerus="yes">
        <source>%n numbers</source>
        <translation>
            <numerusform>%n número</numerusform>
            <numerusform>%n números</numerusform>
        </translation>
    </message>
    <message>
        <source>Shows which numbers share a conversation, and which of them should not.</source>
        <translation>Muestra qué números comparten una conversación, y cuáles no deberían.</translation>
    </message>
    <message>
        <source>Exit codes: 0 done, with or without findings, 2 usage, 3 the store cannot be read, 5 it gave no answer.</source>
        <translation>Códigos de salida: 0 hecho, con o sin hallazgos, 2 uso incorrecto, 3 no se puede leer el almacén, 5 no respondió.</translation>
    </message>
    <message>
        <source>the message was not sent, as the session bus does not answer</source>
        <translation>el mensaje no se envió, porque el bus de sesión no responde</translation>
    </message>
    <message>
        <source>the message was not sent, as another client sends or adds on the store %1; wait for it, or give it more with --timeout</source>
        <translation>el mensaje no se envió, porque otro cliente está enviando o añadiendo en el almacén %1; espera a que acabe o dale más tiempo con --timeout</translation>
    </message>
    <message>
        <source>interrupted before the message was sent</source>
        <translation>interrumpido antes de enviar el mensaje</translation>
    </message>
    <message>
        <source>the message was not sent, as there is no session bus; run it in a session, or under dbus-run-session</source>
        <translation>el mensaje no se envió, porque no hay bus de sesión; ejecútalo en una sesión o con dbus-run-session</translation>
    </message>
    <message>
        <source>the message was not sent, as it cannot be read</source>
        <translation>el mensaje no se envió, porque no se puede leer</translation>
    </message>
    <message>
        <source>the message was not sent and stands in the outbox as %1</source>
        <translation>el mensaje no se envió y está en la bandeja de salida (outbox) como %1</translation>
    </message>
    <message>
        <source>it is not known whether the message was sent; do not repeat it blindly</source>
        <translation>no se sabe si el mensaje se envió; no lo repitas a ciegas</translation>
    </message>
    <message>
        <source>would be sent to %1: %2</source>
        <translation>se enviaría a %1: %2</translation>
    </message>
    <message>
        <source>number and text are not UTF-8; nothing was sent</source>
        <translation>el número y el texto no están en UTF-8; no se envió nada</translation>
    </message>
    <message>
        <source>not sent (%1): %2</source>
        <translation>no enviado (%1): %2</translation>
    </message>
    <message>
        <source>there is no text to send; give one behind the number</source>
        <translation>no hay texto que enviar; escríbelo detrás del número</translation>
    </message>
    <message>
        <source>a message cannot carry this number or text; leave control characters out</source>
        <translation>un mensaje no puede llevar este número o texto; quita los caracteres de control</translation>
    </message>
    <message>
        <source>Send the only message of a file to its recipient.</source>
        <translation>Enviar el único mensaje de un archivo a su destinatario.</translation>
    </message>
    <message>
        <source>Exit codes: 0 sent, 1 refused, 2 usage, 3 the store cannot be used, 5 it gave no answer, 8 not sent, 9 not known whether sent.</source>
        <translation>Códigos de salida: 0 enviado, 1 rechazado, 2 uso incorrecto, 3 no se puede usar el almacén, 5 no respondió, 8 no enviado, 9 no se sabe si se envió.</translation>
    </message>
    <message>
        <source>show needs an id; &quot;korvasync list&quot; shows them</source>
        <translation>show necesita un id; «korvasync list» los muestra</translation>
    </message>
    <message>
        <source>there is no message %1</source>
        <translation>no hay ningún mensaje %1</translation>
    </message>
    <message>
        <source>Shows messages by id; - reads ids from standard input.</source>
        <translation>Muestra mensajes por id; - lee los id de la entrada estándar.</translation>
    </message>
    <message>
        <source>Exit codes: 0 shown, 2 usage, 3 the store cannot be read, 4 an id was not found, 5 it gave no answer.</source>
        <translation>Códigos de salida: 0 mostrados, 2 uso incorrecto, 3 no se puede leer el almacén, 4 no se encontró un id, 5 el almacén no respondió.</translation>
    </message>
    <message>
        <source>Counts messages by folder, year (in UTC) and number, and calls by type, year and number.</source>
        <translation>Cuenta los mensajes por carpeta, año (en UTC) y número, y las llamadas por tipo, año y número.</translation>
    </message>
    <message>
        <source>The N most frequent numbers (text: 10, ndjson: all).</source>
        <translation>Los N números más frecuentes (text: 10, ndjson: todos).</translation>
    </message>
    <message>
        <source>Numbers whose last 7 digits are alike count as one. On a terminal each row has a bar.</source>
        <translation>Los números con las mismas últimas 7 cifras cuentan como uno. En un terminal cada fila lleva una barra.</translation>
    </message>
    <message>
        <source>Exit codes: 0 counted, 2 usage, 3 the store cannot be read, 5 it gave no answer.</source>
        <translation>Códigos de salida: 0 recuento hecho, 2 uso incorrecto, 3 no se puede leer el almacén, 5 no respondió.</translation>
    </message>
    <message>
        <source>the store %1 gave no answer in time; see whether another program holds it, or give it more with --timeout</source>
        <translation>el almacén %1 no respondió a tiempo; mira si otro programa lo retiene, o dale más tiempo con --timeout</translation>
    </message>
    <message>
        <source>the store %1 refuses the request; see that its disk has room and that you may write there</source>
        <translation>el almacén %1 rechaza la petición; mira que su disco tenga espacio y que puedas escribir en él</translation>
    </message>
    <message>
        <source>%1 is no store, and not empty: name another place with --store</source>
        <translation>%1 no es un almacén ni está vacío: indica otro lugar con --store</translation>
    </message>
    <message>
        <source>the store %1 cannot be opened: %2; see whose it is, or name another with --store</source>
        <translation>no se puede abrir el almacén %1: %2; mira de quién es, o indica otro con --store</translation>
    </message>
    <message>
        <source>there is no store at %1: --store names another place, and &quot;korvasync add&quot; makes one</source>
        <translation>no hay ningún almacén en %1: --store indica otro lugar, y «korvasync add» crea uno</translation>
    </message>
    <message>
        <source>verify needs a file, a folder or -</source>
        <translation>verify necesita un archivo, una carpeta o -</translation>
    </message>
    <message>
        <source>Checks that all messages and calls of files are in the store. Adds nothing.</source>
        <translation>Comprueba que todos los mensajes y llamadas de unos archivos están en el almacén. No añade nada.</translation>
    </message>
    <message>
        <source>Items are read and compared as &quot;korvasync add&quot; does it; call-history entries are read as well. Each missing or refused item is listed. Give the same --from, --assume-tz and --folder as for adding.</source>
        <translation>Los elementos se leen y se comparan como con «korvasync add»; también se leen entradas del registro de llamadas. Se nombra cada elemento que falta o se rechaza. Indica los mismos --from, --assume-tz y --folder que al añadirlos.</translation>
    </message>
    <message>
        <source>TZ names no zone that is known here; times without a zone are read with today&apos;s distance, %1: name a zone such as Europe/Helsinki</source>
        <translation>TZ no indica ninguna zona conocida aquí; las horas sin zona se leen con la diferencia de hoy, %1: indica una zona como Europe/Helsinki</translation>
    </message>
    <message>
        <source>%1 prints %2</source>
        <translation>%1 produce %2</translation>
    </message>
    <message>
        <source>there is no command %1</source>
        <translation>no existe la orden %1</translation>
    </message>
    <message>
        <source>no command is given</source>
        <translation>no se ha dado ninguna orden</translation>
    </message>
    <message>
        <source>standard output cannot be written: %1; see where it goes</source>
        <translation>no se puede escribir en la salida estándar: %1; mira adónde va</translation>
    </message>
    <message>
        <source>not a whole vMessage</source>
        <translation>no es un vMessage completo</translation>
    </message>
    <message>
        <source>a draft, and drafts cannot be written</source>
        <translation>un borrador, y los borradores no se pueden escribir</translation>
    </message>
    <message>
        <source>no number of the other party</source>
        <translation>sin número de la otra parte</translation>
    </message>
    <message>
        <source>no message has this id</source>
        <translation>ningún mensaje tiene este id</translation>
    </message>
    <message>
        <source>no known folder; --folder names one</source>
        <translation>sin carpeta conocida; --folder indica una</translation>
    </message>
    <message>
        <source>no known folder; its line X-IRMC-BOX names one, such as INBOX</source>
        <translation>sin carpeta conocida; su línea X-IRMC-BOX indica una, como INBOX</translation>
    </message>
    <message>
        <source>the store did not take it</source>
        <translation>el almacén no lo aceptó</translation>
    </message>
    <message>
        <source>the store did not delete it</source>
        <translation>el almacén no lo borró</translation>
    </message>
    <message>
        <source>not a whole call-history entry</source>
        <translation>no es una entrada completa del registro de llamadas</translation>
    </message>
    <message>
        <source>no TYPE of call that is incoming, outgoing or missed</source>
        <translation>su TYPE no es incoming, outgoing ni missed</translation>
    </message>
    <message>
        <source>no time, or none that can be</source>
        <translation>sin hora, o con una imposible</translation>
    </message>
    <message>
        <source>no time, or none that can be; --on-bad-time now takes the time of the clock</source>
        <translation>sin hora, o con una imposible; --on-bad-time now toma la hora del reloj</translation>
    </message>
    <message>
        <source>there already</source>
        <translation>ya está</translation>
    </message>
    <message>
        <source>more than one other party; a message can be kept for one</source>
        <translation>más de una parte; un mensaje solo se puede guardar para una</translation>
    </message>
    <message>
        <source>a multimedia message</source>
        <translation>un mensaje multimedia</translation>
    </message>
    <message>
        <source>not a text message but another kind of object</source>
        <translation>no es un mensaje de texto, sino otra clase de objeto</translation>
    </message>
    <message>
        <source>the file cannot be read</source>
        <translation>no se puede leer el archivo</translation>
    </message>
    <message>
        <source>--%1 is a number from %2 to %3</source>
        <translation>--%1 es un número de %2 a %3</translation>
    </message>
    <message>
        <source>--%1 is one of: %2</source>
        <translation>--%1 es uno de: %2</translation>
    </message>
    <message>
        <source>--%1 is inbox, outbox, drafts, sent or my</source>
        <translation>--%1 es inbox, outbox, drafts, sent o my</translation>
    </message>
    <message>
        <source>standard input cannot be read: %1; see what it comes from</source>
        <translation>no se puede leer la entrada estándar: %1; mira de dónde viene</translation>
    </message>
    <message>
        <source>standard input is not UTF-8; convert it, with iconv for instance</source>
        <translation>la entrada estándar no está en UTF-8; conviértela, por ejemplo con iconv</translation>
    </message>
    <message>
        <source>%1 is no database id; &quot;korvasync list&quot; shows them</source>
        <translation>%1 no es un id; «korvasync list» los muestra</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2; name a file that you may read</source>
        <translation>no se puede leer %1: %2; indica un archivo que puedas leer</translation>
    </message>
    <message>
        <source>%1 takes exactly one message, and %2 has more</source>
        <translation>%1 admite exactamente un mensaje, y %2 tiene más</translation>
    </message>
    <message>
        <source>%1 takes exactly one message, and %2 has none</source>
        <translation>%1 admite exactamente un mensaje, y %2 no tiene ninguno</translation>
    </message>
    <message>
        <source>text, ndjson; messages: vmsg, csv, mbox, android-xml; calls: entries, android-xml</source>
        <translation>text, ndjson; mensajes: vmsg, csv, mbox, android-xml; llamadas: entries, android-xml</translation>
    </message>
    <message>
        <source>%1 (default)</source>
        <translation>%1 (predeterminado)</translation>
    </message>
    <message>
        <source>Show what would happen; write nothing.</source>
        <translation>Mostrar qué pasaría, sin escribir nada.</translation>
    </message>
    <message>
        <source>Show progress on stderr: auto (default: on a terminal), always or never.</source>
        <translation>Mostrar el progreso en stderr: auto (predeterminado: en un terminal), always (siempre) o never (nunca).</translation>
    </message>
    <message>
        <source>Folder of the store (default: $KORVASYNC_STORE, else korvasync in the data folder).</source>
        <translation>Carpeta del almacén (predeterminado: $KORVASYNC_STORE; si no, korvasync en la carpeta de datos).</translation>
    </message>
    <message>
        <source>Output format: %1.</source>
        <translation>Formato de salida: %1.</translation>
    </message>
    <message>
        <source>No summary; -qq: no warnings either.</source>
        <translation>Sin resumen; -qq: tampoco avisos.</translation>
    </message>
    <message>
        <source>Show the library&apos;s debug messages, with numbers and texts.</source>
        <translation>Mostrar los mensajes de depuración de la biblioteca, con números y textos.</translation>
    </message>
    <message>
        <source>Seconds to wait for an answer from the store, up to 1000000 (default: 60).</source>
        <translation>Segundos que se espera una respuesta del almacén, hasta 1000000 (predeterminado: 60).</translation>
    </message>
    <message>
        <source>This help.</source>
        <translation>Esta ayuda.</translation>
    </message>
    <message>
        <source>The version.</source>
        <translation>La versión.</translation>
    </message>
    <message>
        <source>--store names no folder</source>
        <translation>--store no indica ninguna carpeta</translation>
    </message>
    <message>
        <source>-o names no format</source>
        <translation>-o no indica ningún formato</translation>
    </message>
    <message>
        <source>--progress is auto, always or never</source>
        <translation>--progress es auto, always o never</translation>
    </message>
    <message>
        <source>--timeout is a number of seconds above 0 and up to 1000000</source>
        <translation>--timeout es un número de segundos mayor que 0 y hasta 1000000</translation>
    </message>
    <message numerus="yes">
        <source>%n character(s) that XML cannot hold are replaced by U+FFFD; -o %1 keeps them</source>
        <translation>
            <numerusform>%n carácter que XML no admite se ha sustituido por U+FFFD; -o %1 lo conserva</numerusform>
            <numerusform>%n caracteres que XML no admite se han sustituido por U+FFFD; -o %1 los conserva</numerusform>
        </translation>
    </message>
    <message>
        <source>hidden</source>
        <comment>a number</comment>
        <translation>oculto</translation>
    </message>
    <message>
        <source>total</source>
        <translation>total</translation>
    </message>
    <message>
        <source>folder</source>
        <translation>carpeta</translation>
    </message>
    <message>
        <source>type</source>
        <translation>tipo</translation>
    </message>
    <message>
        <source>year</source>
        <translation>año</translation>
    </message>
    <message>
        <source>number</source>
        <translation>número</translation>
    </message>
    <message>
        <source>calls</source>
        <translation>llamadas</translation>
    </message>
    <message>
        <source>messages</source>
        <translation>mensajes</translation>
    </message>
    <message>
        <source>duration</source>
        <translation>duración</translation>
    </message>
    <message>
        <source>unread</source>
        <comment>messages</comment>
        <translation>sin leer</translation>
    </message>
    <message>
        <source>%1 (%2 of %3)</source>
        <translation>%1 (%2 de %3)</translation>
    </message>
    <message>
        <source>id:</source>
        <translation>id:</translation>
    </message>
    <message>
        <source>folder:</source>
        <translation>carpeta:</translation>
    </message>
    <message>
        <source>number:</source>
        <translation>número:</translation>
    </message>
    <message>
        <source>time:</source>
        <translation>hora:</translation>
    </message>
    <message>
        <source>read:</source>
        <translation>leído:</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>sí</translation>
    </message>
    <message>
        <source>no</source>
        <translation>no</translation>
    </message>
    <message>
        <source>%1 done of about %2</source>
        <translation>%1 de unos %2</translation>
    </message>
    <message>
        <source>%1 done</source>
        <translation>%1 hechos</translation>
    </message>
    <message>
        <source>%1 s left</source>
        <translation>quedan %1 s</translation>
    </message>
    <message numerus="yes">
        <source>%n added</source>
        <translation>
            <numerusform>%n añadido</numerusform>
            <numerusform>%n añadidos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n present</source>
        <translation>
            <numerusform>%n presente</numerusform>
            <numerusform>%n presentes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n missing</source>
        <translation>
            <numerusform>falta %n</numerusform>
            <numerusform>faltan %n</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n changed</source>
        <translation>
            <numerusform>%n cambiado</numerusform>
            <numerusform>%n cambiados</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n would delete</source>
        <translation>
            <numerusform>%n por borrar</numerusform>
            <numerusform>%n por borrar</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n deleted</source>
        <translation>
            <numerusform>%n borrado</numerusform>
            <numerusform>%n borrados</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n refused</source>
        <translation>
            <numerusform>%n rechazado</numerusform>
            <numerusform>%n rechazados</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n failed</source>
        <translation>
            <numerusform>%n fallido</numerusform>
            <numerusform>%n fallidos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n read</source>
        <translation>
            <numerusform>%n leído</numerusform>
            <numerusform>%n leídos</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 not done (%2): %3</source>
        <translation>%1 sin hacer (%2): %3</translation>
    </message>
    <message>
        <source>no answer in time; not stored so far</source>
        <translation>sin respuesta a tiempo; hasta ahora no guardado</translation>
    </message>
    <message>
        <source>not known, as the store cannot be read back</source>
        <translation>no se sabe, porque no se puede releer el almacén</translation>
    </message>
    <message>
        <source>stored, but with another %1</source>
        <translation>guardado, pero con diferencias: %1</translation>
    </message>
    <message>
        <source>the store does not have it</source>
        <translation>el almacén no lo tiene</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 y %2</translation>
    </message>
    <message>
        <source>time</source>
        <translation>hora</translation>
    </message>
    <message>
        <source>read status</source>
        <translation>estado de lectura</translation>
    </message>
    <message>
        <source>text</source>
        <translation>texto</translation>
    </message>
    <message>
        <source>clients that write at the same time cannot be told to wait here (%1); run one after the other</source>
        <translation>aquí no se puede hacer esperar a los clientes que escriben a la vez (%1); ejecútalos uno tras otro</translation>
    </message>
    <message>
        <source>%1; see %2 --help</source>
        <translation>%1; consulta %2 --help</translation>
    </message>
    <message>
        <source>%1 has no action %2</source>
        <translation>%1 no tiene la acción %2</translation>
    </message>
    <message>
        <source>%1; it takes %2</source>
        <translation>%1; admite %2</translation>
    </message>
    <message>
        <source>%1 (did you mean %2?)</source>
        <translation>%1 (¿querías decir %2?)</translation>
    </message>
    <message>
        <source>signs in it are read as a pattern; others can get its messages</source>
        <translation>sus signos se leen como un patrón; otros pueden recibir sus mensajes</translation>
    </message>
    <message>
        <source>A message joins the conversation of the last 7 digits of its number, or of its alphanumeric sender. While there is none, it joins the first whose number ends with them. Findings, the doubtful ones first:
  different-numbers  perhaps two parties, whose numbers end alike
  end-of-others      a short code or sender with which longer ones end: if a
                     longer one came first, it gets the messages of the short
  pattern            a sender with a dot, ^ or $, which can match others
  spellings          one number with and without its prefix: as it should be</source>
        <translation>Un mensaje va a la conversación de las últimas 7 cifras de su número, o de su remitente alfanumérico. Mientras no la haya, va a la primera cuyo número acaba así. Hallazgos, los dudosos primero:
  different-numbers  quizá dos partes cuyos números acaban igual
  end-of-others      un número o remitente corto en que acaban otros más largos:
                     si uno tiene antes una conversación, recibe sus mensajes
  pattern            un remitente con punto, ^ o $, que puede valer por otros
  spellings          un número con y sin prefijo: como debe ser</translation>
    </message>
    <message>
        <source>Collect refused and failed items in this file, to be corrected and added again.</source>
        <translation>Reunir en este archivo los elementos rechazados o fallidos, para corregirlos y añadirlos de nuevo.</translation>
    </message>
    <message>
        <source>a link of another user leads there</source>
        <translation>lleva allí un enlace de otro usuario</translation>
    </message>
    <message>
        <source>it is not a regular file</source>
        <translation>no es un archivo normal</translation>
    </message>
    <message>
        <source>it belongs to another user</source>
        <translation>pertenece a otro usuario</translation>
    </message>
    <message>
        <source>%1 stays as it is, since it may hold what was neither stored nor refused; the rejects are in %2</source>
        <translation>%1 queda como está, pues puede contener algo que ni se guardó ni se rechazó; lo rechazado está en %2</translation>
    </message>
    <message>
        <source>there were no messages or calls to look for; name the files that were added</source>
        <translation>no había mensajes ni llamadas que buscar; indica los archivos que se añadieron</translation>
    </message>
    <message>
        <source>Exit codes: 0 all items are in the store, 1 some are missing or refused, or there was nothing to look for, 2 usage, 3 the store cannot be read, 5 it gave no answer.</source>
        <translation>Códigos de salida: 0 todos los elementos están en el almacén, 1 falta o se rechazó alguno, o no había nada que buscar, 2 uso incorrecto, 3 no se puede leer el almacén, 5 no respondió.</translation>
    </message>
    <message>
        <source>passed over: %1</source>
        <translation>pasado por alto: %1</translation>
    </message>
    <message numerus="yes">
        <source>%n passed over</source>
        <translation>
            <numerusform>%n pasado por alto</numerusform>
            <numerusform>%n pasados por alto</numerusform>
        </translation>
    </message>
    <message>
        <source>On a terminal the default format is text, and control characters become visible signs in every format. In files and pipes they do so only in text.</source>
        <translation>En un terminal el formato predeterminado es text, y los caracteres de control se convierten en signos visibles en todos los formatos. En archivos y tuberías eso solo ocurre con text.</translation>
    </message>
    <message>
        <source>send needs number and text, as two words or on standard input with the number in the first line; or --vmessage alone</source>
        <translation>send necesita número y texto, como dos palabras o en la entrada estándar con el número en la primera línea; o solo --vmessage</translation>
    </message>
    <message>
        <source>Sends a message and prints its id. With -, the first line of standard input is the number and the rest is the text. With NUMBER -, standard input is the text.</source>
        <translation>Envía un mensaje y muestra su id. Con -, la primera línea de la entrada estándar es el número y el resto es el texto. Con NUMBER -, la entrada estándar es el texto.</translation>
    </message>
    <message>
        <source>While a command runs, all users of the machine can see the words of its command line. Scripts should give number and text on standard input.</source>
        <translation>Mientras se ejecuta una orden, todos los usuarios del equipo pueden ver las palabras de su línea de órdenes. Los scripts deberían pasar número y texto por la entrada estándar.</translation>
    </message>
    <message>
        <source>%1 names no time zone: %2</source>
        <translation>%1 no indica ninguna zona horaria: %2</translation>
    </message>
    <message>
        <source>%1; name one such as Europe/Helsinki</source>
        <translation>%1; indica una como Europe/Helsinki</translation>
    </message>
    <message>
        <source>the call log changed meanwhile, so nothing was deleted; look at it and repeat</source>
        <translation>el registro de llamadas cambió entretanto, así que no se borró nada; míralo y repite</translation>
    </message>
    <message>
        <source>nothing was deleted</source>
        <translation>no se borró nada</translation>
    </message>
    <message>
        <source>dups takes --keep and --yes only with --delete</source>
        <translation>dups admite --keep y --yes solo con --delete</translation>
    </message>
    <message>
        <source>no longer what it was when it was asked about</source>
        <translation>ya no es lo que era al preguntar</translation>
    </message>
    <message>
        <source>gone, but the store did not confirm it</source>
        <translation>ya no está, pero el almacén no lo ha confirmado</translation>
    </message>
    <message>
        <source>the system gives this program no thread: %1; end other programs, or raise the limit of processes</source>
        <translation>el sistema no da ningún hilo a este programa: %1; cierra otros programas o sube el límite de procesos</translation>
    </message>
    <message>
        <source>BEGIN:VMSG is missing</source>
        <translation>falta BEGIN:VMSG</translation>
    </message>
    <message>
        <source>cut in the header, behind line %1</source>
        <translation>cortado en la cabecera, tras la línea %1</translation>
    </message>
    <message>
        <source>BEGIN:VBODY is missing above line %1</source>
        <translation>falta BEGIN:VBODY antes de la línea %1</translation>
    </message>
    <message>
        <source>END:VBODY is missing; BEGIN:VBODY is in line %1</source>
        <translation>falta END:VBODY; BEGIN:VBODY está en la línea %1</translation>
    </message>
    <message>
        <source>END:VBODY is followed by line %1, which is neither END:VENV nor END:VMSG</source>
        <translation>a END:VBODY le sigue la línea %1, que no es END:VENV ni END:VMSG</translation>
    </message>
    <message>
        <source>the text below line %1 is longer than 2 GiB</source>
        <translation>el texto bajo la línea %1 supera 2 GiB</translation>
    </message>
    <message>
        <source>--number and --number-tail exclude each other</source>
        <translation>--number y --number-tail se excluyen</translation>
    </message>
    <message>
        <source>--%1 needs a number or a name</source>
        <translation>--%1 necesita un número o un nombre</translation>
    </message>
    <message>
        <source>Before this time.</source>
        <translation>Antes de esta hora.</translation>
    </message>
    <message>
        <source>To or from this number, in any spelling, or alphanumeric sender.</source>
        <translation>De o para este número, en cualquier forma, o este remitente alfanumérico.</translation>
    </message>
    <message>
        <source>To or from any number with the same last 7 digits.</source>
        <translation>De o para cualquier número con las mismas 7 últimas cifras.</translation>
    </message>
    <message>
        <source>Of this conversation, by its id.</source>
        <translation>De esta conversación, por su identificador.</translation>
    </message>
    <message>
        <source>Only what is unread.</source>
        <translation>Solo lo no leído.</translation>
    </message>
    <message>
        <source>Let --grep match upper case with lower case.</source>
        <translation>--grep no distingue mayúsculas de minúsculas.</translation>
    </message>
    <message>
        <source>From this time on: 2024-05-01T10:00:00Z, 2024-05-01, today, yesterday, 30m, 12h, 7d, 2w or @seconds.</source>
        <translation>A partir de esta hora: 2024-05-01T10:00:00Z, 2024-05-01, today (hoy), yesterday (ayer), 30m, 12h, 7d, 2w o @segundos.</translation>
    </message>
    <message>
        <source>Time zone of dates, e.g. Europe/Helsinki (default: the system&apos;s).</source>
        <translation>Zona horaria de las fechas, p. ej. Europe/Helsinki (predeterminado: la del sistema).</translation>
    </message>
    <message>
        <source>--%1 takes 2024-05-01T10:00:00Z, 2024-05-01, today, yesterday, 30m, 12h, 7d, 2w or @seconds</source>
        <translation>--%1 admite 2024-05-01T10:00:00Z, 2024-05-01, today (hoy), yesterday (ayer), 30m, 12h, 7d, 2w o @segundos</translation>
    </message>
    <message>
        <source>the store %1 never gave this cursor, or an older copy of it was put back; start anew without one, and compare</source>
        <translation>el almacén %1 nunca dio este cursor, o se repuso una copia más antigua; empezar de nuevo sin cursor y comparar</translation>
    </message>
    <message>
        <source>changes takes one cursor at most</source>
        <translation>changes admite un cursor como máximo</translation>
    </message>
    <message>
        <source>Prints what was added, changed and deleted since a cursor.</source>
        <translation>Muestra lo que se añadió, cambió y borró desde un cursor.</translation>
    </message>
    <message>
        <source>Go on with what happens next, until interrupted.</source>
        <translation>Sigue con lo que ocurra después, hasta que se interrumpa.</translation>
    </message>
    <message>
        <source>The last line has the cursor for the next time. Without one, all that is in the store counts as added. An item comes once, as it is now, however often it was changed; of a deleted one come its kind and id. With --follow a cursor comes behind each batch.</source>
        <translation>La última línea tiene el cursor para la próxima vez. Sin cursor, todo lo que hay en el almacén cuenta como añadido. Un elemento aparece una vez, tal como está ahora, por muchas veces que se haya cambiado; de uno borrado aparecen su clase y su identificador. Con --follow aparece un cursor detrás de cada tanda.</translation>
    </message>
    <message>
        <source>Exit codes: 0 printed, 2 usage, 3 the store cannot be read or does not know the cursor, 5 it gave no answer.</source>
        <translation>Códigos de salida: 0 mostrado, 2 uso incorrecto, 3 no se puede leer el almacén o no conoce el cursor, 5 no respondió.</translation>
    </message>
    <message>
        <source>--local and --%1 exclude each other</source>
        <translation>--local y --%1 se excluyen mutuamente</translation>
    </message>
    <message>
        <source>Show times in the time zone of --assume-tz or the system&apos;s, not in UTC (text output only).</source>
        <translation>Mostrar las horas en la zona horaria de --assume-tz o del sistema, no en UTC (solo en la salida text).</translation>
    </message>
    <message>
        <source>Calls that began at this time or later: 2024-05-01T10:00:00Z, 2024-05-01, today, yesterday, 30m, 12h, 7d, 2w or @seconds.</source>
        <translation>Llamadas que empezaron a esta hora o después: 2024-05-01T10:00:00Z, 2024-05-01, today (hoy), yesterday (ayer), 30m, 12h, 7d, 2w o @segundos.</translation>
    </message>
    <message>
        <source>Lists conversations, the newest first.</source>
        <translation>Muestra la lista de conversaciones, la más reciente primero.</translation>
    </message>
    <message>
        <source>A line has the id, time of the newest message, number of messages, of unread ones with a star, the other party, and the first words of the newest message. Only messages that the options select are looked at. &quot;korvasync list --conversation ID&quot; lists those of one.</source>
        <translation>Cada línea tiene el identificador, la hora del mensaje más reciente, el número de mensajes, el de no leídos con un asterisco, la otra parte y las primeras palabras del mensaje más reciente. Solo cuentan los mensajes que seleccionan las opciones. &quot;korvasync list --conversation ID&quot; muestra los de una.</translation>
    </message>
    <message>
        <source>its number or text cannot be written as it is</source>
        <translation>su número o su texto no se puede escribir tal como está</translation>
    </message>
    <message>
        <source>--read and --unread exclude each other</source>
        <translation>--read y --unread se excluyen mutuamente</translation>
    </message>
    <message>
        <source>modify needs an id; &quot;korvasync list&quot; shows them</source>
        <translation>modify necesita un id; «korvasync list» los muestra</translation>
    </message>
    <message>
        <source>Replaces a message with the one in a vMessage, or marks or moves messages. The time and token of a stored message stay.</source>
        <translation>Sustituye un mensaje por el de un vMessage, o marca o mueve mensajes. La hora y el token de un mensaje guardado se conservan.</translation>
    </message>
    <message>
        <source>Mark messages as read instead; no file is given.</source>
        <translation>En su lugar, marcar mensajes como leídos; no se indica ningún archivo.</translation>
    </message>
    <message>
        <source>Mark them as unread instead.</source>
        <translation>En su lugar, marcarlos como no leídos.</translation>
    </message>
    <message>
        <source>Move them instead: inbox, outbox, sent or my. Drafts cannot be changed.</source>
        <translation>En su lugar, moverlos: inbox, outbox, sent o my. Los borradores no se pueden cambiar.</translation>
    </message>
    <message numerus="yes">
        <source>%n unchanged</source>
        <translation>
            <numerusform>%n sin cambios</numerusform>
            <numerusform>%n sin cambios</numerusform>
        </translation>
    </message>
</context>
</TS>

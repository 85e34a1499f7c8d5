<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="de">
<context>
    <name>Sagwerk</name>
    <message>
        <source>Beste Qualität, auf Apple Silicon flott.</source>
        <translation>Beste Qualität, mit Grafikkarte flott.</translation>
    </message>
    <message>
        <source>Lokale Transkription mit whisper.cpp (Metal / Neural Engine)</source>
        <translation>Lokale Transkription mit whisper.cpp (CPU / Vulkan)</translation>
    </message>
    <message>
        <source>Sprache aus Audio- und Videodateien in Text – vollständig lokal auf deinem Mac.</source>
        <translation>Sprache aus Audio- und Videodateien in Text – vollständig lokal auf deinem Rechner.</translation>
    </message>
    <message>
        <source>Läuft über GPU/Neural Engine – nichts wird hochgeladen.</source>
        <translation>Läuft über CPU/GPU – nichts wird hochgeladen.</translation>
    </message>
    <message>
        <source>Zieh eine Audio- oder Videodatei ins Fenster oder nimm etwas auf. Weitere Modelle, die Neural Engine und einen KI-Key findest du jederzeit unter „Modelle &amp; Einstellungen“.</source>
        <translation>Zieh eine Audio- oder Videodatei ins Fenster oder nimm etwas auf. Weitere Modelle und einen KI-Key findest du jederzeit unter „Modelle &amp; Einstellungen“.</translation>
    </message>
    <message>
        <source>System (macOS)</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Bei Videos wird die Tonspur transkribiert. Alles bleibt lokal auf diesem Mac.</source>
        <translation>Bei Videos wird die Tonspur transkribiert. Alles bleibt lokal auf diesem Rechner.</translation>
    </message>
    <message>
        <source>Kein Mikrofon-Zugriff. Bitte in Systemeinstellungen → Datenschutz → Mikrofon erlauben.</source>
        <translation>Kein Mikrofon-Zugriff. Bitte ein Mikrofon anschließen und in den Toneinstellungen des Desktops als Eingabe wählen.</translation>
    </message>
    <message>
        <source>Im Finder zeigen</source>
        <translation>Im Dateimanager zeigen</translation>
    </message>
    <message>
        <source>Dieses Format kann macOS nicht direkt dekodieren (z. B. Opus aus WhatsApp/Telegram). Bitte die Datei vorher in ein gängiges Format wie m4a oder mp3 umwandeln.</source>
        <translation>Diese Datei kann Sagwerk nicht direkt dekodieren, und das Programm ffmpeg fehlt. Bitte ffmpeg installieren oder die Datei vorher in ein gängiges Format wie m4a oder mp3 umwandeln.</translation>
    </message>
    <message>
        <source>Aufnahme und Sagwerk werden dauerhaft entfernt.</source>
        <translation>Aufnahme und Transkription werden dauerhaft entfernt.</translation>
    </message>
    <message numerus="yes">
        <source>%n Segmente</source>
        <translation>
            <numerusform>%n Segment</numerusform>
            <numerusform>%n Segmente</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n Stelle(n) werden ersetzt</source>
        <translation>
            <numerusform>%n Stelle wird ersetzt</numerusform>
            <numerusform>%n Stellen werden ersetzt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n Threads</source>
        <translation>
            <numerusform>%n Thread</numerusform>
            <numerusform>%n Threads</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n Dateien</source>
        <translation>
            <numerusform>%n Datei</numerusform>
            <numerusform>%n Dateien</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 von %n Dateien erledigt</source>
        <translation>
            <numerusform>%1 von %n Datei erledigt</numerusform>
            <numerusform>%1 von %n Dateien erledigt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n fehlgeschlagen</source>
        <translation>
            <numerusform>%n fehlgeschlagen</numerusform>
            <numerusform>%n fehlgeschlagen</numerusform>
        </translation>
    </message>
</context>
</TS>

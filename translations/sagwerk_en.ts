<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="de">
<context>
    <name>Sagwerk</name>
    <message>
        <source>Kein Modell ausgewählt/installiert.</source>
        <translation>No model selected/installed.</translation>
    </message>
    <message>
        <source>Abgebrochen.</source>
        <translation>Cancelled.</translation>
    </message>
    <message>
        <source>Download fehlgeschlagen: %1</source>
        <translation>Download failed: %1</translation>
    </message>
    <message>
        <source>Die geladene Datei ist zu klein für dieses Modell; der Server lieferte wohl eine Fehlerseite.</source>
        <translation>The downloaded file is too small for this model; the server probably sent an error page.</translation>
    </message>
    <message>
        <source>Audiodatei nicht gefunden.</source>
        <translation>Audio file not found.</translation>
    </message>
    <message>
        <source>Die Verbindung brach ab, bevor die Datei vollständig war.</source>
        <translation>The connection dropped before the file was complete.</translation>
    </message>
    <message>
        <source>Schnell, für Deutsch grob.</source>
        <translation>Fast, rough for German.</translation>
    </message>
    <message>
        <source>Guter Standard.</source>
        <translation>A good default.</translation>
    </message>
    <message>
        <source>Deutlich genauer.</source>
        <translation>Much more accurate.</translation>
    </message>
    <message>
        <source>Beste Qualität, auf Apple Silicon flott.</source>
        <translation>Best quality, quick on Apple silicon.</translation>
    </message>
    <message>
        <source>Der Ordner „%1“ konnte nicht angelegt werden.</source>
        <translation>The folder “%1” could not be created.</translation>
    </message>
    <message>
        <source>„%1“ ist keine lesbare Transkription.</source>
        <translation>“%1” is not a readable transcription.</translation>
    </message>
    <message>
        <source>Die Datei „%1“ konnte nicht geschrieben werden: %2</source>
        <translation>The file “%1” could not be written: %2</translation>
    </message>
    <message>
        <source>Die Transkription konnte nicht gespeichert werden.</source>
        <translation>The transcription could not be saved.</translation>
    </message>
</context>
</TS>

<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="sv" sourcelanguage="de">
<context>
    <name>Sagwerk</name>
    <message>
        <source>Kein Modell ausgewählt/installiert.</source>
        <translation>Ingen modell vald/installerad.</translation>
    </message>
    <message>
        <source>Abgebrochen.</source>
        <translation>Avbrutet.</translation>
    </message>
    <message>
        <source>Download fehlgeschlagen: %1</source>
        <translation>Nedladdningen misslyckades: %1</translation>
    </message>
    <message>
        <source>Die geladene Datei ist zu klein für dieses Modell; der Server lieferte wohl eine Fehlerseite.</source>
        <translation>Den nedladdade filen är för liten för den här modellen; servern skickade troligen en felsida.</translation>
    </message>
    <message>
        <source>Audiodatei nicht gefunden.</source>
        <translation>Ljudfilen hittades inte.</translation>
    </message>
    <message>
        <source>Die Verbindung brach ab, bevor die Datei vollständig war.</source>
        <translation>Anslutningen bröts innan filen var komplett.</translation>
    </message>
    <message>
        <source>Schnell, für Deutsch grob.</source>
        <translation>Snabb, grov för tyska.</translation>
    </message>
    <message>
        <source>Guter Standard.</source>
        <translation>Ett bra standardval.</translation>
    </message>
    <message>
        <source>Deutlich genauer.</source>
        <translation>Betydligt noggrannare.</translation>
    </message>
    <message>
        <source>Beste Qualität, auf Apple Silicon flott.</source>
        <translation>Bästa kvalitet, snabb på Apple Silicon.</translation>
    </message>
    <message>
        <source>Der Ordner „%1“ konnte nicht angelegt werden.</source>
        <translation>Mappen ”%1” kunde inte skapas.</translation>
    </message>
    <message>
        <source>„%1“ ist keine lesbare Transkription.</source>
        <translation>”%1” är ingen läsbar transkription.</translation>
    </message>
    <message>
        <source>Die Datei „%1“ konnte nicht geschrieben werden: %2</source>
        <translation>Filen ”%1” kunde inte skrivas: %2</translation>
    </message>
    <message>
        <source>Die Transkription konnte nicht gespeichert werden.</source>
        <translation>Transkriptionen kunde inte sparas.</translation>
    </message>
</context>
</TS>

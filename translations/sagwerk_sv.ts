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
    <message>
        <source>Korrektur</source>
        <translation>Korrigering</translation>
    </message>
    <message>
        <source>Suchen</source>
        <translation>Sök</translation>
    </message>
    <message>
        <source>Ersetzen durch</source>
        <translation>Ersätt med</translation>
    </message>
    <message>
        <source>Groß-/Kleinschreibung</source>
        <translation>Skiftlägeskänslig</translation>
    </message>
    <message>
        <source>Nur ganze Wörter</source>
        <translation>Endast hela ord</translation>
    </message>
    <message>
        <source>Abbrechen</source>
        <translation>Avbryt</translation>
    </message>
    <message>
        <source>Ersetzen</source>
        <translation>Ersätt</translation>
    </message>
    <message>
        <source>%1 Stelle(n) werden ersetzt</source>
        <translation>%1 förekomst(er) ersätts</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Paus</translation>
    </message>
    <message>
        <source>Abspielen</source>
        <translation>Spela upp</translation>
    </message>
    <message>
        <source>Original</source>
        <translation>Original</translation>
    </message>
    <message>
        <source>Stufe %1</source>
        <translation>Nivå %1</translation>
    </message>
    <message>
        <source>Korrektur entfernen</source>
        <translation>Ta bort korrigering</translation>
    </message>
    <message>
        <source>Textdatei (.txt)</source>
        <translation>Textfil (.txt)</translation>
    </message>
    <message>
        <source>PDF</source>
        <translation>PDF</translation>
    </message>
    <message>
        <source>Word (.docx)</source>
        <translation>Word (.docx)</translation>
    </message>
    <message>
        <source>Untertitel (.srt)</source>
        <translation>Undertexter (.srt)</translation>
    </message>
    <message>
        <source>Im Finder zeigen</source>
        <translation>Visa i filhanteraren</translation>
    </message>
    <message>
        <source>&quot;%1&quot; korrigieren</source>
        <translation>Korrigera ”%1”</translation>
    </message>
    <message>
        <source>Zuerst ein Wort oder eine Phrase im Text markieren</source>
        <translation>Markera först ett ord eller en fras i texten</translation>
    </message>
    <message>
        <source>Zeitmarken</source>
        <translation>Tidsstämplar</translation>
    </message>
    <message>
        <source>Neu transkribieren</source>
        <translation>Transkribera igen</translation>
    </message>
    <message>
        <source>Mit anderen Einstellungen (Modell/Sprache/Sprecher) erneut transkribieren</source>
        <translation>Transkribera igen med andra inställningar (modell/språk/talare)</translation>
    </message>
    <message>
        <source>Korrigieren</source>
        <translation>Korrigera</translation>
    </message>
    <message>
        <source>Kopiert</source>
        <translation>Kopierat</translation>
    </message>
    <message>
        <source>Kopieren</source>
        <translation>Kopiera</translation>
    </message>
    <message>
        <source>Exportieren</source>
        <translation>Exportera</translation>
    </message>
    <message>
        <source>Korrektur erstellen…</source>
        <translation>Skapa korrigering…</translation>
    </message>
</context>
</TS>

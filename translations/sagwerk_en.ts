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
    <message>
        <source>Korrektur</source>
        <translation>Correction</translation>
    </message>
    <message>
        <source>Suchen</source>
        <translation>Find</translation>
    </message>
    <message>
        <source>Ersetzen durch</source>
        <translation>Replace with</translation>
    </message>
    <message>
        <source>Groß-/Kleinschreibung</source>
        <translation>Match case</translation>
    </message>
    <message>
        <source>Nur ganze Wörter</source>
        <translation>Whole words only</translation>
    </message>
    <message>
        <source>Abbrechen</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Ersetzen</source>
        <translation>Replace</translation>
    </message>
    <message>
        <source>%1 Stelle(n) werden ersetzt</source>
        <translation>%1 occurrence(s) will be replaced</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Abspielen</source>
        <translation>Play</translation>
    </message>
    <message>
        <source>Original</source>
        <translation>Original</translation>
    </message>
    <message>
        <source>Stufe %1</source>
        <translation>Level %1</translation>
    </message>
    <message>
        <source>Korrektur entfernen</source>
        <translation>Remove correction</translation>
    </message>
    <message>
        <source>Textdatei (.txt)</source>
        <translation>Text file (.txt)</translation>
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
        <translation>Subtitles (.srt)</translation>
    </message>
    <message>
        <source>Im Finder zeigen</source>
        <translation>Show in file manager</translation>
    </message>
    <message>
        <source>&quot;%1&quot; korrigieren</source>
        <translation>Correct &quot;%1&quot;</translation>
    </message>
    <message>
        <source>Zuerst ein Wort oder eine Phrase im Text markieren</source>
        <translation>First select a word or phrase in the text</translation>
    </message>
    <message>
        <source>Zeitmarken</source>
        <translation>Timestamps</translation>
    </message>
    <message>
        <source>Neu transkribieren</source>
        <translation>Transcribe again</translation>
    </message>
    <message>
        <source>Mit anderen Einstellungen (Modell/Sprache/Sprecher) erneut transkribieren</source>
        <translation>Transcribe again with other settings (model/language/speakers)</translation>
    </message>
    <message>
        <source>Korrigieren</source>
        <translation>Correct</translation>
    </message>
    <message>
        <source>Kopiert</source>
        <translation>Copied</translation>
    </message>
    <message>
        <source>Kopieren</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>Exportieren</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>Korrektur erstellen…</source>
        <translation>Create correction…</translation>
    </message>
</context>
</TS>

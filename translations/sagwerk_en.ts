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
        <source>Deutsch</source>
        <translation>German</translation>
    </message>
    <message>
        <source>Automatisch</source>
        <translation>Automatic</translation>
    </message>
    <message>
        <source>Englisch</source>
        <translation>English</translation>
    </message>
    <message>
        <source>Französisch</source>
        <translation>French</translation>
    </message>
    <message>
        <source>Schwedisch</source>
        <translation>Swedish</translation>
    </message>
    <message>
        <source>Transkribiere… %1 %      %2 s</source>
        <translation>Transcribing… %1 %      %2 s</translation>
    </message>
    <message>
        <source>Abbrechen</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Fehler</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Transkription löschen?</source>
        <translation>Delete transcription?</translation>
    </message>
    <message>
        <source>Aufnahme und Sagwerk werden dauerhaft entfernt.</source>
        <translation>The recording and its transcript will be removed for good.</translation>
    </message>
    <message>
        <source>Löschen</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Neu</source>
        <translation>New</translation>
    </message>
    <message>
        <source>Neue Transkription</source>
        <translation>New transcription</translation>
    </message>
    <message>
        <source>Diese Transkription löschen</source>
        <translation>Delete this transcription</translation>
    </message>
    <message>
        <source>Interview</source>
        <translation>Interview</translation>
    </message>
    <message>
        <source>Datei öffnen</source>
        <translation>Open File</translation>
    </message>
    <message>
        <source>Einstellungen</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>Hilfe</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>Lade zuerst ein Modell in den Einstellungen.</source>
        <translation>Download a model in the settings first.</translation>
    </message>
    <message>
        <source>Audio- oder Videodatei hierher ziehen</source>
        <translation>Drag an audio or video file here</translation>
    </message>
    <message>
        <source>Bei Videos wird die Tonspur transkribiert. Alles bleibt lokal auf diesem Mac.</source>
        <translation>For videos, the soundtrack is transcribed. Everything stays on this computer.</translation>
    </message>
    <message>
        <source>Datei öffnen…</source>
        <translation>Open File…</translation>
    </message>
    <message>
        <source>Datei</source>
        <translation>File</translation>
    </message>
    <message>
        <source>Beenden</source>
        <translation>Quit</translation>
    </message>
    <message>
        <source>Sagwerk-Hilfe</source>
        <translation>Sagwerk Help</translation>
    </message>
    <message>
        <source>Über Morvane…</source>
        <translation>About Morvane…</translation>
    </message>
    <message>
        <source>Quelle</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>aktiv</source>
        <translation>active</translation>
    </message>
    <message>
        <source>aus</source>
        <translation>off</translation>
    </message>
    <message>
        <source>Audio- und Videodateien</source>
        <translation>Audio and video files</translation>
    </message>
    <message>
        <source>Über Morvane</source>
        <translation>About Morvane</translation>
    </message>
    <message>
        <source>Modelle &amp; Einstellungen</source>
        <translation>Models &amp; Settings</translation>
    </message>
    <message>
        <source>Verlauf</source>
        <translation>History</translation>
    </message>
    <message>
        <source>Modell</source>
        <translation>Model</translation>
    </message>
    <message>
        <source>Sprache</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>Live-Sprecher (Beta)</source>
        <translation>Live speakers (beta)</translation>
    </message>
    <message>
        <source>Sprechererkennung</source>
        <translation>Speaker detection</translation>
    </message>
    <message>
        <source>Anzahl Sprecher</source>
        <translation>Number of speakers</translation>
    </message>
    <message>
        <source>Bereit zum Transkribieren</source>
        <translation>Ready to transcribe</translation>
    </message>
    <message>
        <source>Transkription starten</source>
        <translation>Start transcription</translation>
    </message>
    <message>
        <source>Aufnahme vorbereiten</source>
        <translation>Prepare recording</translation>
    </message>
    <message>
        <source>Neue Aufnahme über das Mikrofon.</source>
        <translation>New recording from the microphone.</translation>
    </message>
    <message>
        <source>Aufnahme starten</source>
        <translation>Start recording</translation>
    </message>
    <message>
        <source>Interview vorbereiten</source>
        <translation>Prepare interview</translation>
    </message>
    <message>
        <source>Live-Transkription während der Aufnahme.</source>
        <translation>Live transcription while recording.</translation>
    </message>
    <message>
        <source>Interview starten</source>
        <translation>Start interview</translation>
    </message>
    <message>
        <source>%1 · %2 MB</source>
        <translation>%1 · %2 MB</translation>
    </message>
    <message>
        <source>Kein Modell installiert</source>
        <translation>No model installed</translation>
    </message>
    <message>
        <source>Wenn du die Anzahl kennst (z. B. Interview = 2), verbessert das die Trennung deutlich.</source>
        <translation>If you know the number (e.g. interview = 2), the speakers are told apart much better.</translation>
    </message>
    <message>
        <source>Schließen</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Audio aufnehmen</source>
        <translation>Record Audio</translation>
    </message>
    <message>
        <source>Willkommen bei Sagwerk</source>
        <translation>Welcome to Sagwerk</translation>
    </message>
</context>
</TS>

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
        <source>Die Datei ist zu groß zum Laden.</source>
        <translation>The file is too large to download.</translation>
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
        <source>Link wird aufgelöst…</source>
        <translation>Resolving link…</translation>
    </message>
    <message>
        <source>Episode wird geladen…</source>
        <translation>Downloading episode…</translation>
    </message>
    <message>
        <source>Podcast-Episode</source>
        <translation>Podcast episode</translation>
    </message>
    <message>
        <source>Netzwerkfehler</source>
        <translation>Network error</translation>
    </message>
    <message>
        <source>Das sieht nicht nach einem gültigen Link aus.</source>
        <translation>That doesn’t look like a valid link.</translation>
    </message>
    <message>
        <source>Spotify-Links lassen sich nicht laden – Spotify gibt kein herunterladbares Audio heraus. Nutze den Apple-Podcasts-, RSS- oder direkten Audio-Link.</source>
        <translation>Spotify links can’t be loaded – Spotify doesn’t provide downloadable audio. Use the Apple Podcasts, RSS or direct audio link.</translation>
    </message>
    <message>
        <source>Diese Apple-Podcasts-Folge konnte nicht aufgelöst werden. Versuch es mit dem RSS-Feed oder dem direkten Audio-Link.</source>
        <translation>This Apple Podcasts episode couldn’t be resolved. Try the RSS feed or the direct audio link.</translation>
    </message>
    <message>
        <source>Im Feed wurde keine Audiodatei gefunden.</source>
        <translation>No audio file was found in the feed.</translation>
    </message>
    <message>
        <source>Unter diesem Link wurde kein Podcast-Audio gefunden. Nutze einen Apple-Podcasts-, RSS- oder direkten Audio-Link.</source>
        <translation>No podcast audio was found at this link. Use an Apple Podcasts, RSS or direct audio link.</translation>
    </message>
    <message>
        <source>Podcast</source>
        <translation>Podcast</translation>
    </message>
    <message>
        <source>Laden</source>
        <translation>Load</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Podcast- oder Audio-Link (Apple Podcasts, RSS, MP3)…</source>
        <translation>Podcast or audio link (Apple Podcasts, RSS, MP3)…</translation>
    </message>
    <message>
        <source>Stopp &amp; Transkribieren</source>
        <translation>Stop &amp; Transcribe</translation>
    </message>
    <message>
        <source>Aufnahme starten</source>
        <translation>Start Recording</translation>
    </message>
    <message>
        <source>Audio aufnehmen</source>
        <translation>Record Audio</translation>
    </message>
    <message>
        <source>Kein Mikrofon-Zugriff. Bitte in Systemeinstellungen → Datenschutz → Mikrofon erlauben.</source>
        <translation>No microphone access. Please allow it in System Settings → Privacy → Microphone.</translation>
    </message>
    <message>
        <source>Abbrechen</source>
        <translation>Cancel</translation>
    </message>
</context>
</TS>

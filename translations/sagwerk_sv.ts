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
        <source>Die Datei ist zu groß zum Laden.</source>
        <translation>Filen är för stor för att laddas ned.</translation>
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
        <source>Link wird aufgelöst…</source>
        <translation>Länken slås upp…</translation>
    </message>
    <message>
        <source>Episode wird geladen…</source>
        <translation>Avsnittet laddas ned…</translation>
    </message>
    <message>
        <source>Podcast-Episode</source>
        <translation>Poddavsnitt</translation>
    </message>
    <message>
        <source>Netzwerkfehler</source>
        <translation>Nätverksfel</translation>
    </message>
    <message>
        <source>Das sieht nicht nach einem gültigen Link aus.</source>
        <translation>Det där ser inte ut som en giltig länk.</translation>
    </message>
    <message>
        <source>Spotify-Links lassen sich nicht laden – Spotify gibt kein herunterladbares Audio heraus. Nutze den Apple-Podcasts-, RSS- oder direkten Audio-Link.</source>
        <translation>Spotify-länkar kan inte laddas – Spotify lämnar inte ut något nedladdningsbart ljud. Använd Apple Podcasts-, RSS- eller den direkta ljudlänken.</translation>
    </message>
    <message>
        <source>Diese Apple-Podcasts-Folge konnte nicht aufgelöst werden. Versuch es mit dem RSS-Feed oder dem direkten Audio-Link.</source>
        <translation>Det gick inte att hitta det här Apple Podcasts-avsnittet. Försök med RSS-flödet eller den direkta ljudlänken.</translation>
    </message>
    <message>
        <source>Im Feed wurde keine Audiodatei gefunden.</source>
        <translation>Ingen ljudfil hittades i flödet.</translation>
    </message>
    <message>
        <source>Unter diesem Link wurde kein Podcast-Audio gefunden. Nutze einen Apple-Podcasts-, RSS- oder direkten Audio-Link.</source>
        <translation>Inget poddljud hittades på den här länken. Använd en Apple Podcasts-, RSS- eller direkt ljudlänk.</translation>
    </message>
    <message>
        <source>Podcast</source>
        <translation>Podd</translation>
    </message>
    <message>
        <source>Laden</source>
        <translation>Ladda</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Podcast- oder Audio-Link (Apple Podcasts, RSS, MP3)…</source>
        <translation>Podd- eller ljudlänk (Apple Podcasts, RSS, MP3)…</translation>
    </message>
    <message>
        <source>Stopp &amp; Transkribieren</source>
        <translation>Stoppa och transkribera</translation>
    </message>
    <message>
        <source>Aufnahme starten</source>
        <translation>Starta inspelning</translation>
    </message>
    <message>
        <source>Audio aufnehmen</source>
        <translation>Spela in ljud</translation>
    </message>
    <message>
        <source>Kein Mikrofon-Zugriff. Bitte in Systemeinstellungen → Datenschutz → Mikrofon erlauben.</source>
        <translation>Ingen mikrofonåtkomst. Tillåt det i Systeminställningar → Integritet → Mikrofon.</translation>
    </message>
    <message>
        <source>Abbrechen</source>
        <translation>Avbryt</translation>
    </message>
</context>
</TS>

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
        <source>Der Server lieferte statt des Modells eine Fehlerseite (HTTP %1).</source>
        <translation>Servern skickade en felsida i stället för modellen (HTTP %1).</translation>
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
        <source>Der Server ist nicht erreichbar. Bitte die Internetverbindung prüfen.</source>
        <translation>Servern går inte att nå. Kontrollera internetanslutningen.</translation>
    </message>
    <message>
        <source>Eine sichere Verbindung zum Server kam nicht zustande.</source>
        <translation>Det gick inte att upprätta en säker anslutning till servern.</translation>
    </message>
    <message>
        <source>Der Server hat nicht rechtzeitig geantwortet.</source>
        <translation>Servern svarade inte i tid.</translation>
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
        <translation>Bästa kvalitet, snabb med ett grafikkort.</translation>
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
        <source>Diese Transkription hat keinen Sprechertext.</source>
        <translation>Den här transkriberingen har ingen talartext.</translation>
    </message>
    <message>
        <source>Diese Transkription hat keine Stufe %1.</source>
        <translation>Den här transkriptionen har ingen nivå %1.</translation>
    </message>
    <message>
        <source>Fertig: %1</source>
        <translation>Klar: %1</translation>
    </message>
    <message>
        <source>Übersprungen, schon im Verlauf: %1</source>
        <translation>Hoppades över, finns redan i historiken: %1</translation>
    </message>
    <message>
        <source>Fehlgeschlagen: %1: %2</source>
        <translation>Misslyckades: %1: %2</translation>
    </message>
    <message>
        <source>Fertig: %1 · übersprungen: %2 · fehlgeschlagen: %3</source>
        <translation>Klara: %1 · överhoppade: %2 · misslyckade: %3</translation>
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
        <source>Claude Opus 5 (genau)</source>
        <translation>Claude Opus 5 (noggrann)</translation>
    </message>
    <message>
        <source>Claude Sonnet 5 (schneller)</source>
        <translation>Claude Sonnet 5 (snabbare)</translation>
    </message>
    <message>
        <source>Claude Haiku 4.5 (am schnellsten)</source>
        <translation>Claude Haiku 4.5 (snabbast)</translation>
    </message>
    <message>
        <source>OpenAI GPT-4o (genau)</source>
        <translation>OpenAI GPT-4o (noggrann)</translation>
    </message>
    <message>
        <source>OpenAI GPT-4o mini (schneller)</source>
        <translation>OpenAI GPT-4o mini (snabbare)</translation>
    </message>
    <message>
        <source>Über Morvane</source>
        <translation>Om Morvane</translation>
    </message>
    <message>
        <source>Lokale Transkription mit whisper.cpp (Metal / Neural Engine)</source>
        <translation>Lokal transkribering med whisper.cpp (CPU / Vulkan)</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Transkription löschen?</source>
        <translation>Radera transkriptionen?</translation>
    </message>
    <message>
        <source>Aufnahme und Sagwerk werden dauerhaft entfernt.</source>
        <translation>Inspelningen och dess transkription tas bort för gott.</translation>
    </message>
    <message>
        <source>Löschen</source>
        <translation>Radera</translation>
    </message>
    <message>
        <source>Neu</source>
        <translation>Ny</translation>
    </message>
    <message>
        <source>Neue Transkription</source>
        <translation>Ny transkription</translation>
    </message>
    <message>
        <source>Diese Transkription löschen</source>
        <translation>Radera den här transkriptionen</translation>
    </message>
    <message>
        <source>Interview</source>
        <translation>Intervju</translation>
    </message>
    <message>
        <source>Aufnehmen</source>
        <translation>Spela in</translation>
    </message>
    <message>
        <source>Datei öffnen</source>
        <translation>Öppna fil</translation>
    </message>
    <message>
        <source>Hilfe</source>
        <translation>Hjälp</translation>
    </message>
    <message>
        <source>Anthropic API-Key</source>
        <translation>Anthropic API-nyckel</translation>
    </message>
    <message>
        <source>OpenAI API-Key</source>
        <translation>OpenAI API-nyckel</translation>
    </message>
    <message>
        <source>hinterlegt</source>
        <translation>sparad</translation>
    </message>
    <message>
        <source>Entfernen</source>
        <translation>Ta bort</translation>
    </message>
    <message>
        <source>%1 · %2 MB</source>
        <translation>%1 · %2 MB</translation>
    </message>
    <message>
        <source>Modell löschen</source>
        <translation>Ta bort modellen</translation>
    </message>
    <message>
        <source>Erneut versuchen</source>
        <translation>Försök igen</translation>
    </message>
    <message>
        <source>Laden fehlgeschlagen: %1</source>
        <translation>Nedladdningen misslyckades: %1</translation>
    </message>
    <message>
        <source>Laden</source>
        <translation>Ladda ned</translation>
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
        <source>Willkommen bei Sagwerk</source>
        <translation>Välkommen till Sagwerk</translation>
    </message>
    <message>
        <source>Aufnehmen oder Dateien ziehen – auch WhatsApp-Sprachnachrichten.</source>
        <translation>Spela in eller dra in filer – även röstmeddelanden från WhatsApp.</translation>
    </message>
    <message>
        <source>Sprache aus Audio- und Videodateien in Text – vollständig lokal auf deinem Mac.</source>
        <translation>Tal från ljud- och videofiler till text – helt lokalt på din dator.</translation>
    </message>
    <message>
        <source>Läuft über GPU/Neural Engine – nichts wird hochgeladen.</source>
        <translation>Körs på CPU/GPU – inget laddas upp.</translation>
    </message>
    <message>
        <source>Sprechererkennung und mitlaufender Wort-Cursor.</source>
        <translation>Talaridentifiering och en ordmarkör som följer med.</translation>
    </message>
    <message>
        <source>Optionale KI-Textüberarbeitung.</source>
        <translation>Valfri AI-bearbetning av texten.</translation>
    </message>
    <message>
        <source>Sprachmodell laden</source>
        <translation>Ladda ned en talmodell</translation>
    </message>
    <message>
        <source>Zum Transkribieren braucht die App mindestens ein Modell. Empfohlen ist **Small** – ein guter Kompromiss aus Tempo und Genauigkeit. Alles wird nur einmal geladen und läuft dann lokal.</source>
        <translation>För att transkribera behöver appen minst en modell. Vi rekommenderar **Small** – en bra balans mellan hastighet och noggrannhet. Allt laddas ned en gång och körs sedan lokalt.</translation>
    </message>
    <message>
        <source>Bereit – du kannst fortfahren.</source>
        <translation>Klart – du kan fortsätta.</translation>
    </message>
    <message>
        <source>Lade mindestens ein Modell, um fortzufahren.</source>
        <translation>Ladda ned minst en modell för att fortsätta.</translation>
    </message>
    <message>
        <source>KI aktivieren (optional)</source>
        <translation>Aktivera AI (valfritt)</translation>
    </message>
    <message>
        <source>Für die optionale Textüberarbeitung und Sprechernamen kannst du einen Key von **Anthropic** und/oder **OpenAI** hinterlegen und das aktive Modell wählen. Transkribieren funktioniert auch ganz ohne KI.</source>
        <translation>För den valfria textbearbetningen och talarnamnen kan du spara en nyckel från **Anthropic** och/eller **OpenAI** och välja den aktiva modellen. Transkribering fungerar helt utan AI.</translation>
    </message>
    <message>
        <source>Aktives Modell</source>
        <translation>Aktiv modell</translation>
    </message>
    <message>
        <source>Alles bereit!</source>
        <translation>Allt är klart!</translation>
    </message>
    <message>
        <source>Zieh eine Audio- oder Videodatei ins Fenster oder nimm etwas auf. Weitere Modelle, die Neural Engine und einen KI-Key findest du jederzeit unter „Modelle &amp; Einstellungen“.</source>
        <translation>Dra in en ljud- eller videofil i fönstret eller spela in något. Fler modeller och en AI-nyckel hittar du alltid under ”Modeller och inställningar”.</translation>
    </message>
    <message>
        <source>Zurück</source>
        <translation>Tillbaka</translation>
    </message>
    <message>
        <source>Später</source>
        <translation>Senare</translation>
    </message>
    <message>
        <source>Los geht&apos;s</source>
        <translation>Sätt igång</translation>
    </message>
    <message>
        <source>Fertig</source>
        <translation>Klar</translation>
    </message>
    <message>
        <source>Weiter</source>
        <translation>Fortsätt</translation>
    </message>
    <message>
        <source>Einstellungen</source>
        <translation>Inställningar</translation>
    </message>
    <message>
        <source>Modelle</source>
        <translation>Modeller</translation>
    </message>
    <message>
        <source>Für die Transkription – lokal, einmalig herunterladen. Größere Modelle sind genauer, aber langsamer. Mit einer Vulkan-fähigen Grafikkarte rechnet die Erkennung dort, sonst auf dem Prozessor.</source>
        <translation>För transkribering – laddas ned en gång och körs lokalt. Större modeller är noggrannare men långsammare. Med ett grafikkort som stöder Vulkan körs igenkänningen där, annars på processorn.</translation>
    </message>
    <message>
        <source>KI-Textüberarbeitung &amp; Sprechernamen</source>
        <translation>AI-textbearbetning och talarnamn</translation>
    </message>
    <message>
        <source>Optional. Für die KI-Überarbeitung und die Namensergänzung bei der Sprechererkennung. Du kannst beide Anbieter pflegen und das aktive Modell wählen. Keys liegen sicher im Schlüsselbund und gehen nur an den jeweiligen Anbieter.</source>
        <translation>Valfritt. För AI-bearbetning och namn vid talaridentifiering. Du kan spara nycklar för båda leverantörerna och välja den aktiva modellen. Nycklarna förvaras säkert i nyckelringen och skickas bara till respektive leverantör.</translation>
    </message>
    <message>
        <source>Für das aktive Modell ist noch kein %1-Key hinterlegt.</source>
        <translation>Ingen %1-nyckel är sparad för den aktiva modellen än.</translation>
    </message>
    <message>
        <source>App-Sprache</source>
        <translation>Appens språk</translation>
    </message>
    <message>
        <source>System (macOS)</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Beta-Funktionen</source>
        <translation>Betafunktioner</translation>
    </message>
    <message>
        <source>Interview: Live-Sprechererkennung</source>
        <translation>Intervju: talaridentifiering i realtid</translation>
    </message>
    <message>
        <source>Diarisiert während des Interviews periodisch – Sprecher-Labels erscheinen und verschieben sich noch. Experimentell, kostet Rechenleistung. Ohne diese Option kannst du Sprecher nach der Aufnahme wie gewohnt erkennen.</source>
        <translation>Separerar talare med jämna mellanrum under intervjun – talaretiketter dyker upp och kan fortfarande flytta sig. Experimentellt och kräver datorkraft. Utan det här alternativet kan du identifiera talare efter inspelningen som vanligt.</translation>
    </message>
    <message>
        <source>Änderungen gelten sofort.</source>
        <translation>Ändringar gäller direkt.</translation>
    </message>
    <message>
        <source>Deutsch</source>
        <translation>Tyska</translation>
    </message>
    <message>
        <source>Automatisch</source>
        <translation>Automatiskt</translation>
    </message>
    <message>
        <source>Englisch</source>
        <translation>Engelska</translation>
    </message>
    <message>
        <source>Französisch</source>
        <translation>Franska</translation>
    </message>
    <message>
        <source>Schwedisch</source>
        <translation>Svenska</translation>
    </message>
    <message>
        <source>Transkribiere… %1 %      %2 s</source>
        <translation>Transkriberar… %1 %      %2 s</translation>
    </message>
    <message>
        <source>Abbrechen</source>
        <translation>Avbryt</translation>
    </message>
    <message>
        <source>Fehler</source>
        <translation>Fel</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Lade zuerst ein Modell in den Einstellungen.</source>
        <translation>Ladda först ner en modell i inställningarna.</translation>
    </message>
    <message>
        <source>Audio- oder Videodatei hierher ziehen</source>
        <translation>Dra hit en ljud- eller videofil</translation>
    </message>
    <message>
        <source>Bei Videos wird die Tonspur transkribiert. Alles bleibt lokal auf diesem Mac.</source>
        <translation>För videor transkriberas ljudspåret. Allt stannar på den här datorn.</translation>
    </message>
    <message>
        <source>Datei öffnen…</source>
        <translation>Öppna fil…</translation>
    </message>
    <message>
        <source>Datei</source>
        <translation>Arkiv</translation>
    </message>
    <message>
        <source>Beenden</source>
        <translation>Avsluta</translation>
    </message>
    <message>
        <source>Sagwerk-Hilfe</source>
        <translation>Sagwerk-hjälp</translation>
    </message>
    <message>
        <source>Über Morvane…</source>
        <translation>Om Morvane…</translation>
    </message>
    <message>
        <source>Quelle</source>
        <translation>Källa</translation>
    </message>
    <message numerus="yes">
        <source>%n Threads</source>
        <translation>
            <numerusform>%n tråd</numerusform>
            <numerusform>%n trådar</numerusform>
        </translation>
    </message>
    <message>
        <source>Audio- und Videodateien</source>
        <translation>Ljud- och videofiler</translation>
    </message>
    <message>
        <source>Umbenennen…</source>
        <translation>Byt namn…</translation>
    </message>
    <message>
        <source>Umbenennen</source>
        <translation>Byt namn</translation>
    </message>
    <message>
        <source>Name im Verlauf:</source>
        <translation>Namn i historiken:</translation>
    </message>
    <message>
        <source>Modelle &amp; Einstellungen</source>
        <translation>Modeller och inställningar</translation>
    </message>
    <message>
        <source>Verlauf</source>
        <translation>Historik</translation>
    </message>
    <message>
        <source>Verlauf durchsuchen</source>
        <translation>Sök i historiken</translation>
    </message>
    <message>
        <source>Modell</source>
        <translation>Modell</translation>
    </message>
    <message>
        <source>Sprache</source>
        <translation>Språk</translation>
    </message>
    <message>
        <source>Live-Sprecher (Beta)</source>
        <translation>Talare live (beta)</translation>
    </message>
    <message>
        <source>Sprechererkennung</source>
        <translation>Talaridentifiering</translation>
    </message>
    <message>
        <source>Anzahl Sprecher</source>
        <translation>Antal talare</translation>
    </message>
    <message>
        <source>Bereit zum Transkribieren</source>
        <translation>Redo att transkribera</translation>
    </message>
    <message>
        <source>Transkription starten</source>
        <translation>Starta transkribering</translation>
    </message>
    <message>
        <source>Aufnahme vorbereiten</source>
        <translation>Förbered inspelning</translation>
    </message>
    <message>
        <source>Neue Aufnahme über das Mikrofon.</source>
        <translation>Ny inspelning via mikrofonen.</translation>
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
        <source>Kein Mikrofon-Zugriff. Bitte in Systemeinstellungen → Datenschutz → Mikrofon erlauben.</source>
        <translation>Ingen mikrofonåtkomst. Anslut en mikrofon och välj den som ingång i skrivbordets ljudinställningar.</translation>
    </message>
    <message>
        <source>Interview vorbereiten</source>
        <translation>Förbered intervju</translation>
    </message>
    <message>
        <source>Live-Transkription während der Aufnahme.</source>
        <translation>Live-transkribering under inspelningen.</translation>
    </message>
    <message>
        <source>Interview starten</source>
        <translation>Starta intervju</translation>
    </message>
    <message numerus="yes">
        <source>%n Dateien</source>
        <translation>
            <numerusform>%n fil</numerusform>
            <numerusform>%n filer</numerusform>
        </translation>
    </message>
    <message>
        <source>Kein Modell installiert</source>
        <translation>Ingen modell installerad</translation>
    </message>
    <message>
        <source>Wenn du die Anzahl kennst (z. B. Interview = 2), verbessert das die Trennung deutlich.</source>
        <translation>Om du vet antalet (t.ex. intervju = 2) blir separeringen betydligt bättre.</translation>
    </message>
    <message>
        <source>Audio aufnehmen</source>
        <translation>Spela in ljud</translation>
    </message>
    <message>
        <source>Modell „%1“ importiert: %2</source>
        <translation>Modellen ”%1” har importerats: %2</translation>
    </message>
    <message>
        <source>Kein Whisper-Modell gefunden: %1</source>
        <translation>Ingen Whisper-modell hittades: %1</translation>
    </message>
    <message>
        <source>Die Modelldatei ist beschädigt oder unvollständig: %1</source>
        <translation>Modellfilen är skadad eller ofullständig: %1</translation>
    </message>
    <message>
        <source>„%1“ ist ein rein englisches Modell; Sagwerk führt nur mehrsprachige Modelle.</source>
        <translation>”%1” är en modell enbart för engelska; Sagwerk erbjuder bara flerspråkiga modeller.</translation>
    </message>
    <message>
        <source>Das Modell „%1“ passt zu keinem Modell des Katalogs: %2.</source>
        <translation>Modellen ”%1” motsvarar ingen modell i katalogen: %2.</translation>
    </message>
    <message>
        <source>Das Modell konnte nicht im Modellordner gespeichert werden: %1</source>
        <translation>Modellen kunde inte sparas i modellmappen: %1</translation>
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
        <source>Ersetzen</source>
        <translation>Ersätt</translation>
    </message>
    <message numerus="yes">
        <source>%n Stelle(n) werden ersetzt</source>
        <translation>
            <numerusform>%n förekomst ersätts</numerusform>
            <numerusform>%n förekomster ersätts</numerusform>
        </translation>
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
        <source>Stufe %1…</source>
        <translation>Nivå %1…</translation>
    </message>
    <message>
        <source>KI-Überarbeitung</source>
        <translation>AI-bearbetning</translation>
    </message>
    <message>
        <source>Stufe 1: schonend · Stufe 2: gründlich, Reihenfolge bleibt · Stufe 3: komplett neu, auch chronologisch</source>
        <translation>Nivå 1: varsam · Nivå 2: grundlig, ordningen behålls · Nivå 3: helt ny, även kronologiskt</translation>
    </message>
    <message>
        <source>API-Key nötig (Einstellungen)</source>
        <translation>API-nyckel krävs (Inställningar)</translation>
    </message>
    <message>
        <source>leicht geglättet</source>
        <translation>lätt putsad</translation>
    </message>
    <message>
        <source>überarbeitet</source>
        <translation>bearbetad</translation>
    </message>
    <message>
        <source>komplett neu</source>
        <translation>helt ny</translation>
    </message>
    <message>
        <source>Stufe %1 · %2</source>
        <translation>Nivå %1 · %2</translation>
    </message>
    <message numerus="yes">
        <source>%n Sprecher</source>
        <translation>
            <numerusform>%n talare</numerusform>
            <numerusform>%n talare</numerusform>
        </translation>
    </message>
    <message>
        <source>Neu erkennen</source>
        <translation>Identifiera igen</translation>
    </message>
    <message>
        <source>Sprecher erkennen</source>
        <translation>Identifiera talare</translation>
    </message>
    <message>
        <source>Trennt Sprecher über die Stimme; KI ergänzt Namen/Rollen.</source>
        <translation>Separerar talare efter röst; AI lägger till namn/roller.</translation>
    </message>
    <message>
        <source>Trennt Sprecher über die Stimme. Ein API-Key ergänzt Namen/Rollen.</source>
        <translation>Separerar talare efter röst. En API-nyckel lägger till namn/roller.</translation>
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
        <source>Untertitel (.vtt)</source>
        <translation>Undertexter (.vtt)</translation>
    </message>
    <message>
        <source>JSON (.json)</source>
        <translation>JSON (.json)</translation>
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
        <source>Sprecher umbenennen</source>
        <translation>Byt namn på talare</translation>
    </message>
    <message>
        <source>Neuer Name für „%1“:</source>
        <translation>Nytt namn för ”%1”:</translation>
    </message>
    <message>
        <source>Korrektur erstellen…</source>
        <translation>Skapa korrigering…</translation>
    </message>
    <message>
        <source>Sprecher umbenennen…</source>
        <translation>Byt namn på talare…</translation>
    </message>
    <message>
        <source>Dieses Format kann macOS nicht direkt dekodieren (z. B. Opus aus WhatsApp/Telegram). Bitte die Datei vorher in ein gängiges Format wie m4a oder mp3 umwandeln.</source>
        <translation>Sagwerk kan inte avkoda den här filen direkt, och programmet ffmpeg saknas. Installera ffmpeg eller konvertera filen först till ett vanligt format som m4a eller mp3.</translation>
    </message>
    <message>
        <source>Die Datei ist beschädigt oder enthält keine lesbare Tonspur.</source>
        <translation>Filen är skadad eller saknar ett läsbart ljudspår.</translation>
    </message>
    <message>
        <source>Kein API-Key für den gewählten Anbieter hinterlegt. Bitte in den Einstellungen eintragen.</source>
        <translation>Ingen API-nyckel sparad för den valda leverantören. Ange en i Inställningar.</translation>
    </message>
    <message>
        <source>Die Anfrage wurde vom Modell abgelehnt.</source>
        <translation>Modellen avvisade förfrågan.</translation>
    </message>
    <message>
        <source>Unerwartete Antwort der API.</source>
        <translation>Oväntat svar från API:et.</translation>
    </message>
    <message>
        <source>Aufnahme konnte nicht gestartet werden.</source>
        <translation>Inspelningen kunde inte startas.</translation>
    </message>
    <message>
        <source>Aufnahme wird abgeschlossen…</source>
        <translation>Inspelningen avslutas…</translation>
    </message>
    <message>
        <source>Wird abgeschlossen…</source>
        <translation>Avslutas…</translation>
    </message>
    <message>
        <source>Stopp &amp; Speichern</source>
        <translation>Stoppa &amp; spara</translation>
    </message>
    <message>
        <source>Transkribiert live mit; Sprecher-Labels erscheinen und aktualisieren sich während der Aufnahme.</source>
        <translation>Transkriberar live; talaretiketter visas och uppdateras under inspelningen.</translation>
    </message>
    <message>
        <source>Interview-Modus</source>
        <translation>Intervjuläge</translation>
    </message>
    <message>
        <source>Sprecher</source>
        <translation>Talare</translation>
    </message>
    <message>
        <source>Warte auf die ersten Wörter…</source>
        <translation>Väntar på de första orden…</translation>
    </message>
    <message>
        <source>Sprecher werden erkannt…</source>
        <translation>Identifierar talare…</translation>
    </message>
    <message>
        <source>Stimmen trennen… %1 %</source>
        <translation>Separerar röster… %1 %</translation>
    </message>
    <message>
        <source>Bereite Audio auf…</source>
        <translation>Förbereder ljud…</translation>
    </message>
    <message>
        <source>KI ergänzt Namen und Rollen…</source>
        <translation>AI lägger till namn och roller…</translation>
    </message>
    <message>
        <source>Nur eine Stimme erkannt. Sind es mehr, wähle ihre Anzahl und erkenne neu.</source>
        <translation>Bara en röst hittades. Finns det fler, välj antalet och identifiera igen.</translation>
    </message>
    <message>
        <source>Der Server lieferte keine Modelldatei.</source>
        <translation>Servern levererade ingen modellfil.</translation>
    </message>
    <message>
        <source>Sprecher-Modelle konnten nicht geladen werden: %1</source>
        <translation>Talarmodellerna kunde inte laddas ned: %1</translation>
    </message>
    <message>
        <source>Lade Sprecher-Modelle (einmalig)…</source>
        <translation>Laddar talarmodeller (endast en gång)…</translation>
    </message>
    <message>
        <source>Sprecher-Modelle konnten nicht geladen werden.</source>
        <translation>Talarmodellerna kunde inte laddas.</translation>
    </message>
    <message>
        <source>Sprechertrennung fehlgeschlagen</source>
        <translation>Talarseparationen misslyckades</translation>
    </message>
    <message>
        <source>Programm für die Sprechertrennung nicht gefunden (App beschädigt?).</source>
        <translation>Programmet för talarseparation hittades inte (är appen skadad?).</translation>
    </message>
    <message>
        <source>Die Liste konnte nicht gelesen werden.</source>
        <translation>Listan kunde inte läsas.</translation>
    </message>
    <message>
        <source>Datei nicht gefunden.</source>
        <translation>Filen hittades inte.</translation>
    </message>
    <message>
        <source>Der Anteil muss K/N sein (0 ≤ K &lt; N) oder auto.</source>
        <translation>Andelen måste vara K/N (0 ≤ K &lt; N) eller auto.</translation>
    </message>
    <message>
        <source>Die Zahl der Anteile fehlt (SAGWERK_SHARD_COUNT).</source>
        <translation>Antalet andelar saknas (SAGWERK_SHARD_COUNT).</translation>
    </message>
    <message>
        <source>Kein Planer gibt einen Anteil vor (SLURM_ARRAY_TASK_ID, JOB_COMPLETION_INDEX, SAGWERK_SHARD_INDEX oder PARALLEL_SEQ).</source>
        <translation>Ingen schemaläggare anger någon andel (SLURM_ARRAY_TASK_ID, JOB_COMPLETION_INDEX, SAGWERK_SHARD_INDEX eller PARALLEL_SEQ).</translation>
    </message>
    <message>
        <source>Die Datei konnte nicht gelesen werden.</source>
        <translation>Filen kunde inte läsas.</translation>
    </message>
    <message numerus="yes">
        <source>%n Segmente</source>
        <translation>
            <numerusform>%n segment</numerusform>
            <numerusform>%n segment</numerusform>
        </translation>
    </message>
    <message>
        <source>in %1 s</source>
        <translation>på %1 s</translation>
    </message>
    <message>
        <source>Keine Treffer</source>
        <translation>Inga träffar</translation>
    </message>
    <message numerus="yes">
        <source>%1 von %n</source>
        <translation>
            <numerusform>%1 av %n</numerusform>
            <numerusform>%1 av %n</numerusform>
        </translation>
    </message>
    <message>
        <source>Im Text suchen</source>
        <translation>Sök i texten</translation>
    </message>
    <message>
        <source>Vorheriger Treffer (Umschalt+Eingabe)</source>
        <translation>Föregående träff (Skift+Retur)</translation>
    </message>
    <message>
        <source>Nächster Treffer (Eingabe, F3)</source>
        <translation>Nästa träff (Retur, F3)</translation>
    </message>
    <message>
        <source>Ab diesem Treffer abspielen (Alt+Eingabe)</source>
        <translation>Spela upp från den här träffen (Alt+Retur)</translation>
    </message>
    <message>
        <source>Suche schließen (Esc)</source>
        <translation>Stäng sökningen (Esc)</translation>
    </message>
    <message>
        <source>Whisper-Modelle (*.bin)</source>
        <translation>Whisper-modeller (*.bin)</translation>
    </message>
    <message>
        <source>Alle Dateien (*)</source>
        <translation>Alla filer (*)</translation>
    </message>
    <message>
        <source>Modell importieren</source>
        <translation>Importera modell</translation>
    </message>
    <message>
        <source>Ein Whisper-Modell von der Festplatte übernehmen: eine whisper.cpp-Datei oder einen CTranslate2-Modellordner</source>
        <translation>Hämta en Whisper-modell från disken: en whisper.cpp-fil eller en CTranslate2-modellmapp</translation>
    </message>
    <message>
        <source>Modelldatei…</source>
        <translation>Modellfil…</translation>
    </message>
    <message>
        <source>Modellordner (CTranslate2)…</source>
        <translation>Modellmapp (CTranslate2)…</translation>
    </message>
    <message>
        <source>Wartet</source>
        <translation>Väntar</translation>
    </message>
    <message>
        <source>Läuft · %1 %</source>
        <translation>Pågår · %1 %</translation>
    </message>
    <message>
        <source>Schon im Verlauf</source>
        <translation>Finns redan i historiken</translation>
    </message>
    <message>
        <source>Fehlgeschlagen</source>
        <translation>Misslyckades</translation>
    </message>
    <message>
        <source>Abgebrochen</source>
        <translation>Avbruten</translation>
    </message>
    <message>
        <source>„%1“ abbrechen</source>
        <translation>Avbryt ”%1”</translation>
    </message>
    <message>
        <source>Öffnen</source>
        <translation>Öppna</translation>
    </message>
    <message>
        <source>„%1“ öffnen</source>
        <translation>Öppna ”%1”</translation>
    </message>
    <message>
        <source>Fortschritt von „%1“</source>
        <translation>Förlopp för ”%1”</translation>
    </message>
    <message>
        <source>Warteschlange</source>
        <translation>Kö</translation>
    </message>
    <message>
        <source>Dateien werden transkribiert</source>
        <translation>Filer transkriberas</translation>
    </message>
    <message>
        <source>Warteschlange abgeschlossen</source>
        <translation>Kön är klar</translation>
    </message>
    <message numerus="yes">
        <source>%1 von %n Dateien erledigt</source>
        <translation>
            <numerusform>%1 av %n fil klar</numerusform>
            <numerusform>%1 av %n filer klara</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n fehlgeschlagen</source>
        <translation>
            <numerusform>%n misslyckades</numerusform>
            <numerusform>%n misslyckades</numerusform>
        </translation>
    </message>
    <message>
        <source>Liste leeren</source>
        <translation>Töm listan</translation>
    </message>
    <message>
        <source>Alle abbrechen</source>
        <translation>Avbryt alla</translation>
    </message>
</context>
</TS>

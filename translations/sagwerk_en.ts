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
        <source>Der Server lieferte statt des Modells eine Fehlerseite (HTTP %1).</source>
        <translation>The server sent an error page instead of the model (HTTP %1).</translation>
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
        <source>Der Server ist nicht erreichbar. Bitte die Internetverbindung prüfen.</source>
        <translation>The server cannot be reached. Please check the internet connection.</translation>
    </message>
    <message>
        <source>Eine sichere Verbindung zum Server kam nicht zustande.</source>
        <translation>A secure connection to the server could not be made.</translation>
    </message>
    <message>
        <source>Der Server hat nicht rechtzeitig geantwortet.</source>
        <translation>The server did not answer in time.</translation>
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
        <translation>Best quality, quick with a graphics card.</translation>
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
        <source>Diese Transkription hat keinen Sprechertext.</source>
        <translation>This transcription has no speaker text.</translation>
    </message>
    <message>
        <source>Diese Transkription hat keine Stufe %1.</source>
        <translation>This transcription has no level %1.</translation>
    </message>
    <message>
        <source>Fertig: %1</source>
        <translation>Done: %1</translation>
    </message>
    <message>
        <source>Übersprungen, schon im Verlauf: %1</source>
        <translation>Skipped, already in the history: %1</translation>
    </message>
    <message>
        <source>Fehlgeschlagen: %1: %2</source>
        <translation>Failed: %1: %2</translation>
    </message>
    <message>
        <source>Fertig: %1 · übersprungen: %2 · fehlgeschlagen: %3</source>
        <translation>Done: %1 · skipped: %2 · failed: %3</translation>
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
        <source>Claude Opus 5 (genau)</source>
        <translation>Claude Opus 5 (accurate)</translation>
    </message>
    <message>
        <source>Claude Sonnet 5 (schneller)</source>
        <translation>Claude Sonnet 5 (faster)</translation>
    </message>
    <message>
        <source>Claude Haiku 4.5 (am schnellsten)</source>
        <translation>Claude Haiku 4.5 (fastest)</translation>
    </message>
    <message>
        <source>OpenAI GPT-4o (genau)</source>
        <translation>OpenAI GPT-4o (accurate)</translation>
    </message>
    <message>
        <source>OpenAI GPT-4o mini (schneller)</source>
        <translation>OpenAI GPT-4o mini (faster)</translation>
    </message>
    <message>
        <source>Über Morvane</source>
        <translation>About Morvane</translation>
    </message>
    <message>
        <source>Lokale Transkription mit whisper.cpp (Metal / Neural Engine)</source>
        <translation>Local transcription with whisper.cpp (CPU / Vulkan)</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
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
        <source>Aufnehmen</source>
        <translation>Record</translation>
    </message>
    <message>
        <source>Datei öffnen</source>
        <translation>Open File</translation>
    </message>
    <message>
        <source>Hilfe</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>Anthropic API-Key</source>
        <translation>Anthropic API key</translation>
    </message>
    <message>
        <source>OpenAI API-Key</source>
        <translation>OpenAI API key</translation>
    </message>
    <message>
        <source>hinterlegt</source>
        <translation>stored</translation>
    </message>
    <message>
        <source>Entfernen</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>%1 · %2 MB</source>
        <translation>%1 · %2 MB</translation>
    </message>
    <message>
        <source>Modell löschen</source>
        <translation>Delete model</translation>
    </message>
    <message>
        <source>Erneut versuchen</source>
        <translation>Try again</translation>
    </message>
    <message>
        <source>Laden fehlgeschlagen: %1</source>
        <translation>Download failed: %1</translation>
    </message>
    <message>
        <source>Laden</source>
        <translation>Download</translation>
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
        <source>Willkommen bei Sagwerk</source>
        <translation>Welcome to Sagwerk</translation>
    </message>
    <message>
        <source>Aufnehmen oder Dateien ziehen – auch WhatsApp-Sprachnachrichten.</source>
        <translation>Record, or drag files in – WhatsApp voice messages too.</translation>
    </message>
    <message>
        <source>Sprache aus Audio- und Videodateien in Text – vollständig lokal auf deinem Mac.</source>
        <translation>Speech from audio and video files into text – entirely on your own computer.</translation>
    </message>
    <message>
        <source>Läuft über GPU/Neural Engine – nichts wird hochgeladen.</source>
        <translation>Runs on CPU/GPU – nothing is uploaded.</translation>
    </message>
    <message>
        <source>Sprechererkennung und mitlaufender Wort-Cursor.</source>
        <translation>Speaker detection and a word cursor that follows along.</translation>
    </message>
    <message>
        <source>Optionale KI-Textüberarbeitung.</source>
        <translation>Optional AI text refinement.</translation>
    </message>
    <message>
        <source>Sprachmodell laden</source>
        <translation>Download a speech model</translation>
    </message>
    <message>
        <source>Zum Transkribieren braucht die App mindestens ein Modell. Empfohlen ist **Small** – ein guter Kompromiss aus Tempo und Genauigkeit. Alles wird nur einmal geladen und läuft dann lokal.</source>
        <translation>To transcribe, the app needs at least one model. **Small** is recommended – a good balance of speed and accuracy. Everything is downloaded once and then runs locally.</translation>
    </message>
    <message>
        <source>Bereit – du kannst fortfahren.</source>
        <translation>Ready – you can continue.</translation>
    </message>
    <message>
        <source>Lade mindestens ein Modell, um fortzufahren.</source>
        <translation>Download at least one model to continue.</translation>
    </message>
    <message>
        <source>KI aktivieren (optional)</source>
        <translation>Enable AI (optional)</translation>
    </message>
    <message>
        <source>Für die optionale Textüberarbeitung und Sprechernamen kannst du einen Key von **Anthropic** und/oder **OpenAI** hinterlegen und das aktive Modell wählen. Transkribieren funktioniert auch ganz ohne KI.</source>
        <translation>For the optional text refinement and speaker names you can store a key from **Anthropic** and/or **OpenAI** and choose the active model. Transcribing works without any AI at all.</translation>
    </message>
    <message>
        <source>Aktives Modell</source>
        <translation>Active model</translation>
    </message>
    <message>
        <source>Alles bereit!</source>
        <translation>All set!</translation>
    </message>
    <message>
        <source>Zieh eine Audio- oder Videodatei ins Fenster oder nimm etwas auf. Weitere Modelle, die Neural Engine und einen KI-Key findest du jederzeit unter „Modelle &amp; Einstellungen“.</source>
        <translation>Drag an audio or video file into the window, or record something. More models and an AI key are always there under “Models &amp; Settings”.</translation>
    </message>
    <message>
        <source>Zurück</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>Später</source>
        <translation>Later</translation>
    </message>
    <message>
        <source>Los geht&apos;s</source>
        <translation>Let’s go</translation>
    </message>
    <message>
        <source>Fertig</source>
        <translation>Done</translation>
    </message>
    <message>
        <source>Weiter</source>
        <translation>Continue</translation>
    </message>
    <message>
        <source>Einstellungen</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>Modelle</source>
        <translation>Models</translation>
    </message>
    <message>
        <source>Für die Transkription – lokal, einmalig herunterladen. Größere Modelle sind genauer, aber langsamer. Mit einer Vulkan-fähigen Grafikkarte rechnet die Erkennung dort, sonst auf dem Prozessor.</source>
        <translation>For transcription – downloaded once, run locally. Larger models are more accurate but slower. With a Vulkan-capable graphics card recognition runs there, otherwise on the processor.</translation>
    </message>
    <message>
        <source>KI-Textüberarbeitung &amp; Sprechernamen</source>
        <translation>AI text refinement &amp; speaker names</translation>
    </message>
    <message>
        <source>Optional. Für die KI-Überarbeitung und die Namensergänzung bei der Sprechererkennung. Du kannst beide Anbieter pflegen und das aktive Modell wählen. Keys liegen sicher im Schlüsselbund und gehen nur an den jeweiligen Anbieter.</source>
        <translation>Optional. For AI refinement and for adding names in speaker detection. You can keep keys for both providers and choose the active model. Keys are kept safely in the keyring and go only to their own provider.</translation>
    </message>
    <message>
        <source>Für das aktive Modell ist noch kein %1-Key hinterlegt.</source>
        <translation>No %1 key is stored for the active model yet.</translation>
    </message>
    <message>
        <source>App-Sprache</source>
        <translation>App language</translation>
    </message>
    <message>
        <source>System (macOS)</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Beta-Funktionen</source>
        <translation>Beta features</translation>
    </message>
    <message>
        <source>Interview: Live-Sprechererkennung</source>
        <translation>Interview: live speaker detection</translation>
    </message>
    <message>
        <source>Diarisiert während des Interviews periodisch – Sprecher-Labels erscheinen und verschieben sich noch. Experimentell, kostet Rechenleistung. Ohne diese Option kannst du Sprecher nach der Aufnahme wie gewohnt erkennen.</source>
        <translation>Separates speakers at intervals during the interview – speaker labels appear and may still shift. Experimental, and it costs computing power. Without this option you can detect speakers after the recording as usual.</translation>
    </message>
    <message>
        <source>Änderungen gelten sofort.</source>
        <translation>Changes apply at once.</translation>
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
    <message numerus="yes">
        <source>%n Threads</source>
        <translation>
            <numerusform>%n thread</numerusform>
            <numerusform>%n threads</numerusform>
        </translation>
    </message>
    <message>
        <source>Audio- und Videodateien</source>
        <translation>Audio and video files</translation>
    </message>
    <message>
        <source>Umbenennen…</source>
        <translation>Rename…</translation>
    </message>
    <message>
        <source>Umbenennen</source>
        <translation>Rename</translation>
    </message>
    <message>
        <source>Name im Verlauf:</source>
        <translation>Name in the history:</translation>
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
        <source>Verlauf durchsuchen</source>
        <translation>Search the history</translation>
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
        <source>Stopp &amp; Transkribieren</source>
        <translation>Stop &amp; Transcribe</translation>
    </message>
    <message>
        <source>Aufnahme starten</source>
        <translation>Start recording</translation>
    </message>
    <message>
        <source>Kein Mikrofon-Zugriff. Bitte in Systemeinstellungen → Datenschutz → Mikrofon erlauben.</source>
        <translation>No microphone access. Please connect a microphone and choose it as the input in your desktop’s sound settings.</translation>
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
    <message numerus="yes">
        <source>%n Dateien</source>
        <translation>
            <numerusform>%n file</numerusform>
            <numerusform>%n files</numerusform>
        </translation>
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
        <source>Audio aufnehmen</source>
        <translation>Record Audio</translation>
    </message>
    <message>
        <source>Modell „%1“ importiert: %2</source>
        <translation>Model “%1” imported: %2</translation>
    </message>
    <message>
        <source>Kein Whisper-Modell gefunden: %1</source>
        <translation>No Whisper model found: %1</translation>
    </message>
    <message>
        <source>Die Modelldatei ist beschädigt oder unvollständig: %1</source>
        <translation>The model file is damaged or incomplete: %1</translation>
    </message>
    <message>
        <source>„%1“ ist ein rein englisches Modell; Sagwerk führt nur mehrsprachige Modelle.</source>
        <translation>“%1” is an English-only model; Sagwerk offers multilingual models only.</translation>
    </message>
    <message>
        <source>Das Modell „%1“ passt zu keinem Modell des Katalogs: %2.</source>
        <translation>The model “%1” matches no model of the catalogue: %2.</translation>
    </message>
    <message>
        <source>Das Modell konnte nicht im Modellordner gespeichert werden: %1</source>
        <translation>The model could not be saved in the models folder: %1</translation>
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
        <source>Ersetzen</source>
        <translation>Replace</translation>
    </message>
    <message numerus="yes">
        <source>%n Stelle(n) werden ersetzt</source>
        <translation>
            <numerusform>%n occurrence will be replaced</numerusform>
            <numerusform>%n occurrences will be replaced</numerusform>
        </translation>
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
        <source>Stufe %1…</source>
        <translation>Level %1…</translation>
    </message>
    <message>
        <source>KI-Überarbeitung</source>
        <translation>AI Revision</translation>
    </message>
    <message>
        <source>Stufe 1: schonend · Stufe 2: gründlich, Reihenfolge bleibt · Stufe 3: komplett neu, auch chronologisch</source>
        <translation>Level 1: gentle · Level 2: thorough, order kept · Level 3: completely new, also chronological</translation>
    </message>
    <message>
        <source>API-Key nötig (Einstellungen)</source>
        <translation>API key required (Settings)</translation>
    </message>
    <message>
        <source>leicht geglättet</source>
        <translation>lightly smoothed</translation>
    </message>
    <message>
        <source>überarbeitet</source>
        <translation>revised</translation>
    </message>
    <message>
        <source>komplett neu</source>
        <translation>completely new</translation>
    </message>
    <message>
        <source>Stufe %1 · %2</source>
        <translation>Level %1 · %2</translation>
    </message>
    <message numerus="yes">
        <source>%n Sprecher</source>
        <translation>
            <numerusform>%n speaker</numerusform>
            <numerusform>%n speakers</numerusform>
        </translation>
    </message>
    <message>
        <source>Neu erkennen</source>
        <translation>Detect Again</translation>
    </message>
    <message>
        <source>Sprecher erkennen</source>
        <translation>Detect Speakers</translation>
    </message>
    <message>
        <source>Trennt Sprecher über die Stimme; KI ergänzt Namen/Rollen.</source>
        <translation>Separates speakers by voice; AI adds names/roles.</translation>
    </message>
    <message>
        <source>Trennt Sprecher über die Stimme. Ein API-Key ergänzt Namen/Rollen.</source>
        <translation>Separates speakers by voice. An API key adds names/roles.</translation>
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
        <source>Untertitel (.vtt)</source>
        <translation>Subtitles (.vtt)</translation>
    </message>
    <message>
        <source>JSON (.json)</source>
        <translation>JSON (.json)</translation>
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
        <source>Sprecher umbenennen</source>
        <translation>Rename speaker</translation>
    </message>
    <message>
        <source>Neuer Name für „%1“:</source>
        <translation>New name for “%1”:</translation>
    </message>
    <message>
        <source>Korrektur erstellen…</source>
        <translation>Create correction…</translation>
    </message>
    <message>
        <source>Sprecher umbenennen…</source>
        <translation>Rename speaker…</translation>
    </message>
    <message>
        <source>Dieses Format kann macOS nicht direkt dekodieren (z. B. Opus aus WhatsApp/Telegram). Bitte die Datei vorher in ein gängiges Format wie m4a oder mp3 umwandeln.</source>
        <translation>Sagwerk cannot decode this file directly, and the ffmpeg program is missing. Please install ffmpeg or convert the file to a common format such as m4a or mp3 first.</translation>
    </message>
    <message>
        <source>Die Datei ist beschädigt oder enthält keine lesbare Tonspur.</source>
        <translation>The file is damaged or has no readable audio track.</translation>
    </message>
    <message>
        <source>Kein API-Key für den gewählten Anbieter hinterlegt. Bitte in den Einstellungen eintragen.</source>
        <translation>No API key stored for the selected provider. Please enter one in Settings.</translation>
    </message>
    <message>
        <source>Die Anfrage wurde vom Modell abgelehnt.</source>
        <translation>The model refused the request.</translation>
    </message>
    <message>
        <source>Unerwartete Antwort der API.</source>
        <translation>Unexpected response from the API.</translation>
    </message>
    <message>
        <source>Aufnahme konnte nicht gestartet werden.</source>
        <translation>The recording could not be started.</translation>
    </message>
    <message>
        <source>Aufnahme wird abgeschlossen…</source>
        <translation>Finishing the recording…</translation>
    </message>
    <message>
        <source>Wird abgeschlossen…</source>
        <translation>Finishing…</translation>
    </message>
    <message>
        <source>Stopp &amp; Speichern</source>
        <translation>Stop &amp; Save</translation>
    </message>
    <message>
        <source>Transkribiert live mit; Sprecher-Labels erscheinen und aktualisieren sich während der Aufnahme.</source>
        <translation>Transcribes live; speaker labels appear and update during the recording.</translation>
    </message>
    <message>
        <source>Interview-Modus</source>
        <translation>Interview Mode</translation>
    </message>
    <message>
        <source>Sprecher</source>
        <translation>Speakers</translation>
    </message>
    <message>
        <source>Warte auf die ersten Wörter…</source>
        <translation>Waiting for the first words…</translation>
    </message>
    <message>
        <source>Sprecher werden erkannt…</source>
        <translation>Detecting speakers…</translation>
    </message>
    <message>
        <source>Stimmen trennen… %1 %</source>
        <translation>Separating voices… %1 %</translation>
    </message>
    <message>
        <source>Bereite Audio auf…</source>
        <translation>Preparing audio…</translation>
    </message>
    <message>
        <source>KI ergänzt Namen und Rollen…</source>
        <translation>AI is adding names and roles…</translation>
    </message>
    <message>
        <source>Nur eine Stimme erkannt. Sind es mehr, wähle ihre Anzahl und erkenne neu.</source>
        <translation>Only one voice found. If there are more, choose how many and detect again.</translation>
    </message>
    <message>
        <source>Der Server lieferte keine Modelldatei.</source>
        <translation>The server did not deliver a model file.</translation>
    </message>
    <message>
        <source>Sprecher-Modelle konnten nicht geladen werden: %1</source>
        <translation>The speaker models could not be downloaded: %1</translation>
    </message>
    <message>
        <source>Lade Sprecher-Modelle (einmalig)…</source>
        <translation>Loading speaker models (one time only)…</translation>
    </message>
    <message>
        <source>Sprecher-Modelle konnten nicht geladen werden.</source>
        <translation>The speaker models could not be loaded.</translation>
    </message>
    <message>
        <source>Sprechertrennung fehlgeschlagen</source>
        <translation>Speaker separation failed</translation>
    </message>
    <message>
        <source>Programm für die Sprechertrennung nicht gefunden (App beschädigt?).</source>
        <translation>Speaker separation program not found (is the app damaged?).</translation>
    </message>
    <message>
        <source>Die Liste konnte nicht gelesen werden.</source>
        <translation>The list could not be read.</translation>
    </message>
    <message>
        <source>Datei nicht gefunden.</source>
        <translation>File not found.</translation>
    </message>
    <message>
        <source>Der Anteil muss K/N sein (0 ≤ K &lt; N) oder auto.</source>
        <translation>The share must be K/N (0 ≤ K &lt; N) or auto.</translation>
    </message>
    <message>
        <source>Die Zahl der Anteile fehlt (SAGWERK_SHARD_COUNT).</source>
        <translation>The number of shares is missing (SAGWERK_SHARD_COUNT).</translation>
    </message>
    <message>
        <source>Kein Planer gibt einen Anteil vor (SLURM_ARRAY_TASK_ID, JOB_COMPLETION_INDEX, SAGWERK_SHARD_INDEX oder PARALLEL_SEQ).</source>
        <translation>No scheduler sets a share (SLURM_ARRAY_TASK_ID, JOB_COMPLETION_INDEX, SAGWERK_SHARD_INDEX or PARALLEL_SEQ).</translation>
    </message>
    <message>
        <source>Die Datei konnte nicht gelesen werden.</source>
        <translation>The file could not be read.</translation>
    </message>
    <message numerus="yes">
        <source>%n Segmente</source>
        <translation>
            <numerusform>%n segment</numerusform>
            <numerusform>%n segments</numerusform>
        </translation>
    </message>
    <message>
        <source>in %1 s</source>
        <translation>in %1 s</translation>
    </message>
    <message>
        <source>Keine Treffer</source>
        <translation>No matches</translation>
    </message>
    <message numerus="yes">
        <source>%1 von %n</source>
        <translation>
            <numerusform>%1 of %n</numerusform>
            <numerusform>%1 of %n</numerusform>
        </translation>
    </message>
    <message>
        <source>Im Text suchen</source>
        <translation>Find in text</translation>
    </message>
    <message>
        <source>Vorheriger Treffer (Umschalt+Eingabe)</source>
        <translation>Previous match (Shift+Enter)</translation>
    </message>
    <message>
        <source>Nächster Treffer (Eingabe, F3)</source>
        <translation>Next match (Enter, F3)</translation>
    </message>
    <message>
        <source>Ab diesem Treffer abspielen (Alt+Eingabe)</source>
        <translation>Play from this match (Alt+Enter)</translation>
    </message>
    <message>
        <source>Suche schließen (Esc)</source>
        <translation>Close search (Esc)</translation>
    </message>
    <message>
        <source>Whisper-Modelle (*.bin)</source>
        <translation>Whisper models (*.bin)</translation>
    </message>
    <message>
        <source>Alle Dateien (*)</source>
        <translation>All files (*)</translation>
    </message>
    <message>
        <source>Modell importieren</source>
        <translation>Import model</translation>
    </message>
    <message>
        <source>Ein Whisper-Modell von der Festplatte übernehmen: eine whisper.cpp-Datei oder einen CTranslate2-Modellordner</source>
        <translation>Take a Whisper model from disk: a whisper.cpp file or a CTranslate2 model folder</translation>
    </message>
    <message>
        <source>Modelldatei…</source>
        <translation>Model file…</translation>
    </message>
    <message>
        <source>Modellordner (CTranslate2)…</source>
        <translation>Model folder (CTranslate2)…</translation>
    </message>
    <message>
        <source>Wartet</source>
        <translation>Waiting</translation>
    </message>
    <message>
        <source>Läuft · %1 %</source>
        <translation>Running · %1 %</translation>
    </message>
    <message>
        <source>Schon im Verlauf</source>
        <translation>Already in the history</translation>
    </message>
    <message>
        <source>Fehlgeschlagen</source>
        <translation>Failed</translation>
    </message>
    <message>
        <source>Abgebrochen</source>
        <translation>Cancelled</translation>
    </message>
    <message>
        <source>„%1“ abbrechen</source>
        <translation>Cancel “%1”</translation>
    </message>
    <message>
        <source>Öffnen</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>„%1“ öffnen</source>
        <translation>Open “%1”</translation>
    </message>
    <message>
        <source>Fortschritt von „%1“</source>
        <translation>Progress of “%1”</translation>
    </message>
    <message>
        <source>Warteschlange</source>
        <translation>Queue</translation>
    </message>
    <message>
        <source>Dateien werden transkribiert</source>
        <translation>Transcribing files</translation>
    </message>
    <message>
        <source>Warteschlange abgeschlossen</source>
        <translation>Queue finished</translation>
    </message>
    <message numerus="yes">
        <source>%1 von %n Dateien erledigt</source>
        <translation>
            <numerusform>%1 of %n file done</numerusform>
            <numerusform>%1 of %n files done</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n fehlgeschlagen</source>
        <translation>
            <numerusform>%n failed</numerusform>
            <numerusform>%n failed</numerusform>
        </translation>
    </message>
    <message>
        <source>Liste leeren</source>
        <translation>Clear list</translation>
    </message>
    <message>
        <source>Alle abbrechen</source>
        <translation>Cancel all</translation>
    </message>
</context>
</TS>

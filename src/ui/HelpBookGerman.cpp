// The German help book. It speaks to the user in the informal "du", as the interface does.
#include "ui/HelpBook.h"

using namespace HelpBook;

const QList<HelpSection> &HelpContent::german()
{
    static const QList<HelpSection> book{
        section("overview", "sparkles", "Überblick",
                {
                    p("Sagwerk macht aus Sprache in Audio- und Videodateien Text – direkt auf deinem Rechner. Die "
                      "Erkennung läuft lokal mit whisper.cpp; Aufnahmen und Transkripte verlassen den Rechner nicht."),
                    p("Nur wenn du ausdrücklich eine **KI-Funktion** startest – die Textüberarbeitung oder die "
                      "Namensergänzung bei der Sprechererkennung –, geht der Text an den Anbieter des gewählten "
                      "KI-Modells, also an Anthropic oder OpenAI. Die Audiodatei geht nie hinaus."),
                    h("Was Sagwerk kann"),
                    list({
                        "**Dateien transkribieren**: Audio und Video, mit einer Zeitmarke für jedes Wort.",
                        "**Aufnehmen** über das Mikrofon; danach wird sofort transkribiert.",
                        "**Interview**: mitschreiben, während gesprochen wird – auf Wunsch mit Sprechertrennung.",
                        "**Podcast- und Audio-Links**: Link einfügen, Sagwerk lädt die Datei und transkribiert sie.",
                        "**Sprechererkennung** über die Stimmen; eine KI kann Namen und Rollen ergänzen.",
                        "**KI-Textüberarbeitung** in drei Stufen, von schonend geglättet bis frei neu geschrieben.",
                        "**Wiedergabe mit Wort-Cursor** und Korrekturen per Suchen und Ersetzen.",
                        "**Export** als Text, Untertitel (.srt), PDF und Word.",
                    }),
                }),
        section("start", "play.circle", "Erste Schritte",
                {
                    p("In drei Schritten zum ersten Transkript:"),
                    list({
                        "**Modell laden**: Öffne **Modelle & Einstellungen** und lade ein Sprachmodell. **Small** "
                        "ist ein guter Anfang.",
                        "**Datei transkribieren**: Zieh eine Audio- oder Videodatei ins Fenster oder wähle **Datei "
                        "öffnen**. Prüfe Modell und Sprache und klicke **Transkription starten**.",
                        "**Mehrere Dateien**: Zieh mehrere Dateien ins Fenster oder wähle sie zusammen unter **Datei "
                        "öffnen**. Modell, Sprache und Sprechererkennung gelten für alle; jede Datei hat eine Zeile mit "
                        "ihrem Stand und lässt sich einzeln abbrechen. Misslingt eine, laufen die anderen weiter.",
                        "**Aufnehmen**: Klicke **Aufnehmen** und dann **Aufnahme starten**. **Stopp & "
                        "Transkribieren** beendet die Aufnahme, und die Transkription beginnt.",
                    }),
                    p("Jedes Ergebnis steht danach links im **Verlauf** und bleibt dort, bis du es löschst."),
                    tip("Kommt bei der Aufnahme nichts an? Sagwerk nimmt vom Standard-Eingabegerät deines Desktops "
                        "auf (PipeWire oder PulseAudio). Prüfe in den Toneinstellungen des Desktops oder mit "
                        "`pavucontrol`, ob das richtige Mikrofon gewählt und nicht stummgeschaltet ist. Läuft Sagwerk "
                        "in einer Sandbox wie Flatpak, muss sie den Zugriff auf das Mikrofon erlauben."),
                }),
        section("models", "cpu", "Modelle & Grafikkarte",
                {
                    p("Sagwerk erkennt Sprache mit Whisper-Modellen. Jedes wird einmal aus dem öffentlichen "
                      "Modellverzeichnis von whisper.cpp geladen und liegt dann in `~/.local/share/Sagwerk/models`."),
                    list({
                        "**Base** (57 MB): sehr schnell, für Deutsch eher grob – gut für klare Sprache und zum "
                        "Ausprobieren.",
                        "**Small** (181 MB): der empfohlene Standard, ein guter Kompromiss aus Tempo und Genauigkeit.",
                        "**Medium** (514 MB): deutlich genauer, braucht aber mehr Zeit und Arbeitsspeicher.",
                        "**Large v3 Turbo** (547 MB): die beste Qualität; flott auf schnellen Rechnern, besonders "
                        "mit Grafikkarte.",
                    }),
                    p("Das gewählte Modell hat einen gefüllten Kreis. Ein Klick auf eine installierte Zeile wählt "
                      "sie, der Papierkorb löscht das Modell. Löschst du das gewählte, geht die Wahl auf das erste "
                      "installierte Modell über."),
                    h("Grafikkarte (Vulkan)"),
                    p("Wo Vulkan eine Grafikkarte findet, erkennt whisper.cpp die Sprache darauf – um ein Mehrfaches "
                      "schneller als auf dem Prozessor. Ohne Grafikkarte rechnet der Prozessor, mit so vielen "
                      "Threads, wie er Leistungskerne hat (zwei bis acht). Einzurichten ist nichts: Der Treiber deiner "
                      "Distribution (Mesa oder der des Herstellers) genügt."),
                    tip("Während einer Transkription zeigt das Schild zwischen den beiden Gefäßen, was rechnet: "
                        "**GPU** mit dem Namen der Karte oder **CPU** mit der Zahl der Threads. Zeigst du darauf, "
                        "erscheint der volle Name."),
                }),
        section("languages", "globe", "Sprachen",
                {
                    p("Zwei Sprachen spielen eine Rolle, und sie haben nichts miteinander zu tun:"),
                    list({
                        "**Sprache der Aufnahme**: Du wählst sie vor dem Transkribieren unter **Sprache** – Deutsch, "
                        "Englisch, Französisch, Schwedisch oder **Automatisch**. Mit der richtigen festen Sprache "
                        "wird das Ergebnis meist etwas besser; **Automatisch** erkennt sie aus den ersten Sekunden.",
                        "**Sprache der Oberfläche**: Du stellst sie unter **Modelle & Einstellungen → App-Sprache** "
                        "ein – Deutsch, Englisch, Französisch, Schwedisch oder **System**, das der Spracheinstellung "
                        "deines Desktops folgt. Der Wechsel wirkt sofort, ohne Neustart.",
                    }),
                    p("Diese Hilfe gibt es auf Deutsch und Englisch; bei Französisch oder Schwedisch erscheint sie "
                      "auf Englisch."),
                    p("Die KI-Überarbeitung bleibt immer in der Sprache des Transkripts und übersetzt nicht."),
                }),
        section("transcribe", "waveform", "Transkribieren",
                {
                    p("Sagwerk liest die gängigen Audio- und Videoformate, zum Beispiel m4a, mp3, wav, aac, aiff, "
                      "flac, ogg, opus, amr und caf sowie mp4, m4v, mov, mkv, webm, avi, wmv, flv, mpg und 3gp. "
                      "Bei Videos wird die Tonspur transkribiert; auch WhatsApp-Sprachnachrichten funktionieren."),
                    p("Während der Arbeit siehst du den Fortschritt in Prozent, die verstrichene Zeit und die "
                      "Auslastung der Prozessorkerne und der Grafikkarte. **Abbrechen** beendet die Transkription "
                      "sofort; es bleibt nichts Halbfertiges zurück."),
                    p("Wie lange es dauert, hängt von Modell, Rechner und Länge ab: Kleine Modelle sind viel "
                      "schneller als Echtzeit, große brauchen deutlich länger."),
                    tip("Lange Stille oder Musik kann die Erkennung ins Stocken bringen: Der Fortschritt steht dann "
                        "eine Weile, oder ein Satz wiederholt sich. Schneide solche Stellen vorher heraus oder "
                        "versuche ein größeres Modell."),
                }),
        section("playback", "play.rectangle", "Wiedergabe & Cursor",
                {
                    p("Hat ein Transkript eine Audiodatei, steht über dem Text eine Wiedergabeleiste. Während die "
                      "Aufnahme läuft, hebt der **Wort-Cursor** das gerade gesprochene Wort hervor und hält es im "
                      "Blick."),
                    list({
                        "**Abspielen und Pause** über die Wiedergabeleiste.",
                        "**Springen**: Ein Klick auf ein Wort setzt die Wiedergabe an diese Stelle.",
                        "**Markieren**: Ziehst du über eine Passage, springt die Wiedergabe an ihren Anfang.",
                        "**Kopieren**: Markierten Text kopierst du mit Strg+C, den ganzen Text mit **Kopieren** "
                        "oder Strg+Umschalt+C.",
                        "**Zeitmarken**: Der Schalter blendet die Zeitspalte links neben dem Text ein und aus.",
                        "**Leertaste** spielt ab und hält an, solange kein Eingabefeld den Fokus hat.",
                        "**Suchen** mit Strg+F: Groß- und Kleinschreibung und Akzente zählen nicht. Eingabe oder F3 "
                        "springt zum nächsten Treffer, Umschalt+Eingabe zum vorigen, Alt+Eingabe spielt ab dem "
                        "Treffer ab, Esc schließt die Suche.",
                    }),
                    p("Mit **Korrigieren** machst du aus einer Markierung eine Regel zum Suchen und Ersetzen. "
                      "Korrekturen ändern das Original nie: Sie gelten beim Anzeigen, Kopieren und Exportieren und "
                      "lassen sich jederzeit wieder entfernen."),
                }),
        section("speakers", "person.2.wave.2", "Sprechererkennung",
                {
                    p("Sagwerk findet in zwei Stufen heraus, wer wann spricht:"),
                    list({
                        "**Akustisch**: Ein lokales Modell trennt die Stimmen und setzt „Sprecher 1:“, „Sprecher 2:“ "
                        "usw. vor die Beiträge. Das läuft vollständig auf deinem Rechner.",
                        "**Mit KI**: Ist ein API-Key hinterlegt, ersetzt das aktive KI-Modell die Nummern durch Namen "
                        "oder Rollen – aber nur, wenn sie aus dem Gespräch eindeutig hervorgehen, etwa weil sich "
                        "jemand vorstellt.",
                    }),
                    p("Einen Sprecher benennst du in der Sprecheransicht mit einem Doppelklick auf seine Überschrift "
                      "oder über das Kontextmenü um, etwa „Sprecher 1“ in „Diane Miller“. Der Name gilt in jeder "
                      "Ansicht, beim Kopieren und in jedem Export; Strg+Z nimmt ihn zurück."),
                    p("Ohne API-Key funktioniert die Trennung nach Stimmen genauso; die Sprecher heißen dann "
                      "„Sprecher 1“, „Sprecher 2“ und so weiter. Ein Transkript ohne Audiodatei lässt sich nur mit KI "
                      "in Sprecher gliedern."),
                    p("Kennst du die Zahl der Sprecher – ein Interview hat meist zwei –, stelle sie vor dem "
                      "Transkribieren unter **Anzahl Sprecher** ein. Das verbessert die Trennung deutlich."),
                    tip("Beim ersten Mal lädt Sagwerk einmalig die Modelle für die Sprechertrennung, etwa 34 MB, nach "
                        "`~/.local/share/Sagwerk/models`. Danach geht es ohne Download."),
                }),
        section("ai", "wand.and.stars", "KI-Textüberarbeitung",
                {
                    p("Mit einem API-Key von Anthropic oder OpenAI überarbeitet Sagwerk den Text in einer von drei "
                      "Stufen:"),
                    list({
                        "**Stufe 1 · leicht geglättet**: korrigiert Zeichensetzung, Groß- und Kleinschreibung und "
                        "Erkennungsfehler und entfernt Füllwörter wie „äh“. Sinn und Reihenfolge bleiben.",
                        "**Stufe 2 · überarbeitet**: verbessert Grammatik, Stil und Wortwahl gründlich; die "
                        "Reihenfolge der Aussagen bleibt.",
                        "**Stufe 3 · komplett neu**: formt einen klar gegliederten Text und darf Aussagen umstellen, "
                        "gruppieren und zusammenfassen.",
                    }),
                    p("Jede Stufe erscheint als eigene Ansicht neben dem Original, das unverändert bleibt. Ist der "
                      "Text nach Sprechern gegliedert, bleiben die Sprecher-Kennzeichnungen erhalten."),
                    p("Lange Transkripte schickt Sagwerk in Abschnitten, an Satzgrenzen geteilt, nacheinander an das "
                      "Modell und setzt die Antworten wieder zusammen. Das dauert entsprechend länger."),
                    tip("Die KI bekommt nur den Text, nie die Audiodatei – und nur, wenn du eine Stufe startest."),
                }),
        section("export", "square.and.arrow.up", "Exportieren & Teilen",
                {
                    p("Was gerade zu sehen ist – das Original, die Sprecheransicht oder eine KI-Stufe –, gibst du so "
                      "weiter:"),
                    list({
                        "**Kopieren** legt den Text in die Zwischenablage, mit deinen Korrekturen und, wenn "
                        "eingeschaltet, mit Zeitmarken.",
                        "**Textdatei (.txt)** speichert denselben Text als UTF-8-Datei.",
                        "**Untertitel (.srt)** und **(.vtt)** speichern die Zeitabschnitte als Untertitel, mit deinen "
                        "Korrekturen; WebVTT nennt die Sprecher, SubRip aus der Sprecheransicht auch.",
                        "**JSON (.json)** speichert das ganze Transkript für andere Programme: Abschnitte, Wörter mit "
                        "Zeiten, Sprecher, Sprache, Modell und Korrekturen.",
                        "**PDF** und **Word (.docx)** speichern den Text mit dem Dateinamen als Titel.",
                        "Der letzte Eintrag im Menü **Exportieren** zeigt den Ordner des Transkripts im "
                        "Dateimanager.",
                    }),
                    p("Der vorgeschlagene Dateiname nennt die Ansicht: „-sprecher“ für die Sprecheransicht, „-stufe2“ "
                      "für die zweite KI-Stufe."),
                }),
        section("storage", "folder", "Aufnahmen & Speicherort",
                {
                    p("Jede Transkription ist ein eigener Ordner, ein **Bündel**. Darin liegen die Datei "
                      "`sagwerk.json` mit Text, Zeitmarken, Sprechertext, KI-Stufen und Korrekturen sowie eine Kopie "
                      "der Audiodatei."),
                    p("Alle Bündel liegen in `~/.local/share/Sagwerk/Aufnahmen`, die Modelle in "
                      "`~/.local/share/Sagwerk/models`. Ist `XDG_DATA_HOME` gesetzt, steht der Ordner `Sagwerk` dort."),
                    p("Umbenennen kannst du einen Eintrag im **Verlauf** mit F2 oder über sein Kontextmenü."),
                    p("Zum Löschen klickst du einen Eintrag im **Verlauf** mit der rechten Maustaste an und wählst "
                      "**Löschen** – das geschieht ohne Rückfrage. Oder du öffnest den Eintrag und klickst in der "
                      "Werkzeugleiste auf **Löschen**; dann fragt Sagwerk nach. Entfernt wird das ganze Bündel "
                      "samt Audio."),
                    tip("Für eine Sicherung genügt es, den Ordner `~/.local/share/Sagwerk/Aufnahmen` zu kopieren."),
                }),
        section("settings", "gearshape", "Einstellungen",
                {
                    p("Unter **Modelle & Einstellungen** findest du neben den Sprachmodellen:"),
                    list({
                        "**API-Key**: je ein Feld für Anthropic und OpenAI. **Speichern** legt einen neu eingegebenen "
                        "Key ab, **Entfernen** löscht den gespeicherten sofort. Ein gespeicherter Key wird nie "
                        "angezeigt, nur als „hinterlegt“ markiert.",
                        "**Aktives Modell**: das KI-Modell für Überarbeitung und Sprechernamen. Fehlt der Key seines "
                        "Anbieters, weist ein orangefarbener Hinweis darauf hin.",
                        "**App-Sprache**: die Sprache der Oberfläche; sie wechselt sofort.",
                    }),
                    p("Unter **Beta-Funktionen** schaltest du die Live-Sprechererkennung im Interview ein. Alles "
                      "außer den Keys wirkt sofort, ohne **Speichern**; die Einstellungen liegen in "
                      "`~/.config/Morvane/Sagwerk.conf`."),
                }),
        section("privacy", "lock.shield", "Datenschutz",
                {
                    p("Sagwerk ist so gebaut, dass deine Aufnahmen bei dir bleiben."),
                    list({
                        "**Auf deinem Rechner**: Erkennung, Wiedergabe, Sprechertrennung, Korrekturen und Export. "
                        "Audio, Transkripte und Einstellungen bleiben auf deiner Festplatte.",
                        "**An die KI**: Nur wenn du eine KI-Stufe oder die Namensergänzung startest, geht der Text an "
                        "den Anbieter des aktiven Modells, Anthropic oder OpenAI – nie die Audiodatei.",
                        "**Aus dem Netz**: Sonst nutzt Sagwerk das Netz nur, um Sprach- und Sprechermodelle zu laden "
                        "und um Podcast- oder Audio-Links aufzulösen und herunterzuladen.",
                        "**Deine Keys** liegen im Schlüsselbund deines Desktops (Secret Service, etwa GNOME "
                        "Schlüsselbund oder KWallet) – nicht in Einstellungsdateien und nie in einem Protokoll.",
                    }),
                    tip("Ohne API-Key verlässt kein Text deinen Rechner."),
                }),
        section("distribute", "shippingbox", "Weitergabe der App",
                {
                    p("Sagwerk ist für Linux auf 64-Bit-Prozessoren gebaut: x86-64 und ARM64. Es braucht eine "
                      "Distribution, die whisper.cpp mitbringt, etwa Debian testing oder Ubuntu ab 26.04."),
                    p("Weitergegeben wird Sagwerk als Quelltext: `scripts/run` baut und startet die App, "
                      "`scripts/test` baut sie und prüft sie mit der Testsuite. Fehlen dem System Pakete, richten "
                      "die Skripte eine passende Debian-Umgebung selbst ein."),
                    p("Transkripte gibst du weiter, indem du sie exportierst oder ein Bündel aus "
                      "`~/.local/share/Sagwerk/Aufnahmen` kopierst. Die Modelle lädt jeder Rechner selbst."),
                    tip("Beim ersten Speichern eines API-Keys fragt der Desktop vielleicht, ob ein Schlüsselbund "
                        "angelegt oder entsperrt werden soll. Das ist die normale Abfrage des Secret Service: "
                        "Bestätige sie mit deinem Passwort, sonst kann Sagwerk den Key nicht dauerhaft ablegen."),
                }),
        section("trouble", "exclamationmark.triangle", "Problemlösung",
                {
                    list({
                        "**Format wird nicht unterstützt**: Die Datei hat keine lesbare Tonspur oder ein seltenes "
                        "Format. Wandle sie um, etwa mit `ffmpeg -i eingabe.xyz ausgabe.wav`, und versuche es erneut.",
                        "**Transkription stockt**: Lange Stille oder Musik bremst die Erkennung. Brich ab, schneide die "
                        "Stelle heraus oder nimm ein größeres Modell.",
                        "**KI-Fehler 401**: Der API-Key ist ungültig oder abgelaufen. Trage unter **Modelle & "
                        "Einstellungen** einen neuen ein.",
                        "**KI-Fehler 429**: zu viele Anfragen in kurzer Zeit, oder das Kontingent beim Anbieter ist "
                        "erschöpft. Warte kurz und versuche es erneut.",
                        "**Sprecherzeile ohne Zeit**: Hat die KI eine Zeile stark umformuliert, findet Sagwerk sie in "
                        "der Aufnahme nicht wieder. Die Zeile bleibt im Text, nur ohne Zeitmarke und Sprung.",
                        "**Kein Modell installiert**: Ohne Sprachmodell lässt sich nichts transkribieren. Lade eines "
                        "unter **Modelle & Einstellungen**.",
                    }),
                }),
        section("about", "info.circle", "Über Morvane",
                {
                    p("Sagwerk ist ein Programm von **Morvane**."),
                    p("Es steht auf den Schultern freier Software:"),
                    list({
                        "**whisper.cpp** mit ggml erkennt die Sprache.",
                        "**sherpa-onnx** trennt die Sprecher.",
                        "**FFmpeg** liest Audio und Video.",
                        "**Qt** zeichnet die Oberfläche, **QtKeychain** spricht mit dem Schlüsselbund.",
                    }),
                    p("Danke an alle, die diese Projekte pflegen."),
                }),
    };
    return book;
}

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
        <source>Datei öffnen</source>
        <translation>Öppna fil</translation>
    </message>
    <message>
        <source>Einstellungen</source>
        <translation>Inställningar</translation>
    </message>
    <message>
        <source>Hilfe</source>
        <translation>Hjälp</translation>
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
    <message>
        <source>aktiv</source>
        <translation>aktiv</translation>
    </message>
    <message>
        <source>aus</source>
        <translation>av</translation>
    </message>
    <message>
        <source>Audio- und Videodateien</source>
        <translation>Ljud- och videofiler</translation>
    </message>
    <message>
        <source>Über Morvane</source>
        <translation>Om Morvane</translation>
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
        <source>Aufnahme starten</source>
        <translation>Starta inspelning</translation>
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
    <message>
        <source>%1 · %2 MB</source>
        <translation>%1 · %2 MB</translation>
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
        <source>Schließen</source>
        <translation>Stäng</translation>
    </message>
    <message>
        <source>Audio aufnehmen</source>
        <translation>Spela in ljud</translation>
    </message>
    <message>
        <source>Willkommen bei Sagwerk</source>
        <translation>Välkommen till Sagwerk</translation>
    </message>
</context>
</TS>

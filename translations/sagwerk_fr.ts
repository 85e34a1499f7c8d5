<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="de">
<context>
    <name>Sagwerk</name>
    <message>
        <source>Kein Modell ausgewählt/installiert.</source>
        <translation>Aucun modèle sélectionné/installé.</translation>
    </message>
    <message>
        <source>Abgebrochen.</source>
        <translation>Annulé.</translation>
    </message>
    <message>
        <source>Download fehlgeschlagen: %1</source>
        <translation>Échec du téléchargement : %1</translation>
    </message>
    <message>
        <source>Die geladene Datei ist zu klein für dieses Modell; der Server lieferte wohl eine Fehlerseite.</source>
        <translation>Le fichier téléchargé est trop petit pour ce modèle ; le serveur a sans doute renvoyé une page d’erreur.</translation>
    </message>
    <message>
        <source>Audiodatei nicht gefunden.</source>
        <translation>Fichier audio introuvable.</translation>
    </message>
    <message>
        <source>Die Verbindung brach ab, bevor die Datei vollständig war.</source>
        <translation>La connexion a été interrompue avant la fin du fichier.</translation>
    </message>
    <message>
        <source>Schnell, für Deutsch grob.</source>
        <translation>Rapide, approximatif pour l’allemand.</translation>
    </message>
    <message>
        <source>Guter Standard.</source>
        <translation>Un bon choix par défaut.</translation>
    </message>
    <message>
        <source>Deutlich genauer.</source>
        <translation>Nettement plus précis.</translation>
    </message>
    <message>
        <source>Beste Qualität, auf Apple Silicon flott.</source>
        <translation>Meilleure qualité, rapide sur Apple Silicon.</translation>
    </message>
    <message>
        <source>Der Ordner „%1“ konnte nicht angelegt werden.</source>
        <translation>Impossible de créer le dossier « %1 ».</translation>
    </message>
    <message>
        <source>„%1“ ist keine lesbare Transkription.</source>
        <translation>« %1 » n’est pas une transcription lisible.</translation>
    </message>
    <message>
        <source>Die Datei „%1“ konnte nicht geschrieben werden: %2</source>
        <translation>Impossible d’écrire le fichier « %1 » : %2</translation>
    </message>
    <message>
        <source>Die Transkription konnte nicht gespeichert werden.</source>
        <translation>La transcription n’a pas pu être enregistrée.</translation>
    </message>
    <message>
        <source>Korrektur</source>
        <translation>Correction</translation>
    </message>
    <message>
        <source>Suchen</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Ersetzen durch</source>
        <translation>Remplacer par</translation>
    </message>
    <message>
        <source>Groß-/Kleinschreibung</source>
        <translation>Respecter la casse</translation>
    </message>
    <message>
        <source>Nur ganze Wörter</source>
        <translation>Mots entiers uniquement</translation>
    </message>
    <message>
        <source>Abbrechen</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Ersetzen</source>
        <translation>Remplacer</translation>
    </message>
    <message>
        <source>%1 Stelle(n) werden ersetzt</source>
        <translation>%1 occurrence(s) seront remplacée(s)</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Abspielen</source>
        <translation>Lire</translation>
    </message>
    <message>
        <source>Original</source>
        <translation>Original</translation>
    </message>
    <message>
        <source>Stufe %1</source>
        <translation>Niveau %1</translation>
    </message>
    <message>
        <source>Korrektur entfernen</source>
        <translation>Supprimer la correction</translation>
    </message>
    <message>
        <source>Textdatei (.txt)</source>
        <translation>Fichier texte (.txt)</translation>
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
        <translation>Sous-titres (.srt)</translation>
    </message>
    <message>
        <source>Im Finder zeigen</source>
        <translation>Afficher dans le gestionnaire de fichiers</translation>
    </message>
    <message>
        <source>&quot;%1&quot; korrigieren</source>
        <translation>Corriger « %1 »</translation>
    </message>
    <message>
        <source>Zuerst ein Wort oder eine Phrase im Text markieren</source>
        <translation>Sélectionnez d’abord un mot ou une expression dans le texte</translation>
    </message>
    <message>
        <source>Zeitmarken</source>
        <translation>Horodatage</translation>
    </message>
    <message>
        <source>Neu transkribieren</source>
        <translation>Retranscrire</translation>
    </message>
    <message>
        <source>Mit anderen Einstellungen (Modell/Sprache/Sprecher) erneut transkribieren</source>
        <translation>Retranscrire avec d’autres réglages (modèle/langue/intervenants)</translation>
    </message>
    <message>
        <source>Korrigieren</source>
        <translation>Corriger</translation>
    </message>
    <message>
        <source>Kopiert</source>
        <translation>Copié</translation>
    </message>
    <message>
        <source>Kopieren</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Exportieren</source>
        <translation>Exporter</translation>
    </message>
    <message>
        <source>Korrektur erstellen…</source>
        <translation>Créer une correction…</translation>
    </message>
</context>
</TS>

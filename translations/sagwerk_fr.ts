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
</context>
</TS>

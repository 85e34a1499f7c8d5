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
        <source>Deutsch</source>
        <translation>Allemand</translation>
    </message>
    <message>
        <source>Automatisch</source>
        <translation>Automatique</translation>
    </message>
    <message>
        <source>Englisch</source>
        <translation>Anglais</translation>
    </message>
    <message>
        <source>Französisch</source>
        <translation>Français</translation>
    </message>
    <message>
        <source>Schwedisch</source>
        <translation>Suédois</translation>
    </message>
    <message>
        <source>Transkribiere… %1 %      %2 s</source>
        <translation>Transcription… %1 %      %2 s</translation>
    </message>
    <message>
        <source>Abbrechen</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Fehler</source>
        <translation>Erreur</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Transkription löschen?</source>
        <translation>Supprimer la transcription ?</translation>
    </message>
    <message>
        <source>Aufnahme und Sagwerk werden dauerhaft entfernt.</source>
        <translation>L’enregistrement et sa transcription seront supprimés définitivement.</translation>
    </message>
    <message>
        <source>Löschen</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>Neu</source>
        <translation>Nouveau</translation>
    </message>
    <message>
        <source>Neue Transkription</source>
        <translation>Nouvelle transcription</translation>
    </message>
    <message>
        <source>Diese Transkription löschen</source>
        <translation>Supprimer cette transcription</translation>
    </message>
    <message>
        <source>Interview</source>
        <translation>Entretien</translation>
    </message>
    <message>
        <source>Datei öffnen</source>
        <translation>Ouvrir un fichier</translation>
    </message>
    <message>
        <source>Einstellungen</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>Hilfe</source>
        <translation>Aide</translation>
    </message>
    <message>
        <source>Lade zuerst ein Modell in den Einstellungen.</source>
        <translation>Téléchargez d’abord un modèle dans les réglages.</translation>
    </message>
    <message>
        <source>Audio- oder Videodatei hierher ziehen</source>
        <translation>Glissez un fichier audio ou vidéo ici</translation>
    </message>
    <message>
        <source>Bei Videos wird die Tonspur transkribiert. Alles bleibt lokal auf diesem Mac.</source>
        <translation>Pour les vidéos, c’est la piste audio qui est transcrite. Tout reste sur cet ordinateur.</translation>
    </message>
    <message>
        <source>Datei öffnen…</source>
        <translation>Ouvrir un fichier…</translation>
    </message>
    <message>
        <source>Datei</source>
        <translation>Fichier</translation>
    </message>
    <message>
        <source>Beenden</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Sagwerk-Hilfe</source>
        <translation>Aide de Sagwerk</translation>
    </message>
    <message>
        <source>Über Morvane…</source>
        <translation>À propos de Morvane…</translation>
    </message>
    <message>
        <source>Quelle</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>aktiv</source>
        <translation>actif</translation>
    </message>
    <message>
        <source>aus</source>
        <translation>désactivé</translation>
    </message>
    <message>
        <source>Audio- und Videodateien</source>
        <translation>Fichiers audio et vidéo</translation>
    </message>
    <message>
        <source>Über Morvane</source>
        <translation>À propos de Morvane</translation>
    </message>
    <message>
        <source>Modelle &amp; Einstellungen</source>
        <translation>Modèles et réglages</translation>
    </message>
    <message>
        <source>Verlauf</source>
        <translation>Historique</translation>
    </message>
    <message>
        <source>Modell</source>
        <translation>Modèle</translation>
    </message>
    <message>
        <source>Sprache</source>
        <translation>Langue</translation>
    </message>
    <message>
        <source>Live-Sprecher (Beta)</source>
        <translation>Locuteurs en direct (bêta)</translation>
    </message>
    <message>
        <source>Sprechererkennung</source>
        <translation>Reconnaissance des locuteurs</translation>
    </message>
    <message>
        <source>Anzahl Sprecher</source>
        <translation>Nombre de locuteurs</translation>
    </message>
    <message>
        <source>Bereit zum Transkribieren</source>
        <translation>Prêt à transcrire</translation>
    </message>
    <message>
        <source>Transkription starten</source>
        <translation>Lancer la transcription</translation>
    </message>
    <message>
        <source>Aufnahme vorbereiten</source>
        <translation>Préparer l’enregistrement</translation>
    </message>
    <message>
        <source>Neue Aufnahme über das Mikrofon.</source>
        <translation>Nouvel enregistrement avec le micro.</translation>
    </message>
    <message>
        <source>Aufnahme starten</source>
        <translation>Démarrer l’enregistrement</translation>
    </message>
    <message>
        <source>Interview vorbereiten</source>
        <translation>Préparer l’entretien</translation>
    </message>
    <message>
        <source>Live-Transkription während der Aufnahme.</source>
        <translation>Transcription en direct pendant l’enregistrement.</translation>
    </message>
    <message>
        <source>Interview starten</source>
        <translation>Démarrer l’entretien</translation>
    </message>
    <message>
        <source>%1 · %2 MB</source>
        <translation>%1 · %2 Mo</translation>
    </message>
    <message>
        <source>Kein Modell installiert</source>
        <translation>Aucun modèle installé</translation>
    </message>
    <message>
        <source>Wenn du die Anzahl kennst (z. B. Interview = 2), verbessert das die Trennung deutlich.</source>
        <translation>Si vous connaissez le nombre (p. ex. entretien = 2), la séparation est nettement meilleure.</translation>
    </message>
    <message>
        <source>Schließen</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Audio aufnehmen</source>
        <translation>Enregistrer de l’audio</translation>
    </message>
    <message>
        <source>Willkommen bei Sagwerk</source>
        <translation>Bienvenue dans Sagwerk</translation>
    </message>
</context>
</TS>

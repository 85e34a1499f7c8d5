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
        <source>Die Datei ist zu groß zum Laden.</source>
        <translation>Le fichier est trop volumineux pour être téléchargé.</translation>
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
        <source>Link wird aufgelöst…</source>
        <translation>Résolution du lien…</translation>
    </message>
    <message>
        <source>Episode wird geladen…</source>
        <translation>Téléchargement de l’épisode…</translation>
    </message>
    <message>
        <source>Podcast-Episode</source>
        <translation>Épisode de podcast</translation>
    </message>
    <message>
        <source>Netzwerkfehler</source>
        <translation>Erreur réseau</translation>
    </message>
    <message>
        <source>Das sieht nicht nach einem gültigen Link aus.</source>
        <translation>Cela ne ressemble pas à un lien valide.</translation>
    </message>
    <message>
        <source>Spotify-Links lassen sich nicht laden – Spotify gibt kein herunterladbares Audio heraus. Nutze den Apple-Podcasts-, RSS- oder direkten Audio-Link.</source>
        <translation>Les liens Spotify ne peuvent pas être chargés – Spotify ne fournit pas d’audio téléchargeable. Utilise le lien Apple Podcasts, RSS ou le lien audio direct.</translation>
    </message>
    <message>
        <source>Diese Apple-Podcasts-Folge konnte nicht aufgelöst werden. Versuch es mit dem RSS-Feed oder dem direkten Audio-Link.</source>
        <translation>Impossible de résoudre cet épisode Apple Podcasts. Essaie le flux RSS ou le lien audio direct.</translation>
    </message>
    <message>
        <source>Im Feed wurde keine Audiodatei gefunden.</source>
        <translation>Aucun fichier audio n’a été trouvé dans le flux.</translation>
    </message>
    <message>
        <source>Unter diesem Link wurde kein Podcast-Audio gefunden. Nutze einen Apple-Podcasts-, RSS- oder direkten Audio-Link.</source>
        <translation>Aucun audio de podcast n’a été trouvé à ce lien. Utilise un lien Apple Podcasts, RSS ou un lien audio direct.</translation>
    </message>
    <message>
        <source>Podcast</source>
        <translation>Podcast</translation>
    </message>
    <message>
        <source>Laden</source>
        <translation>Charger</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Podcast- oder Audio-Link (Apple Podcasts, RSS, MP3)…</source>
        <translation>Lien de podcast ou audio (Apple Podcasts, RSS, MP3)…</translation>
    </message>
    <message>
        <source>Stopp &amp; Transkribieren</source>
        <translation>Arrêter et transcrire</translation>
    </message>
    <message>
        <source>Aufnahme starten</source>
        <translation>Démarrer l’enregistrement</translation>
    </message>
    <message>
        <source>Audio aufnehmen</source>
        <translation>Enregistrer de l’audio</translation>
    </message>
    <message>
        <source>Kein Mikrofon-Zugriff. Bitte in Systemeinstellungen → Datenschutz → Mikrofon erlauben.</source>
        <translation>Pas d’accès au micro. Autorise-le dans Réglages système → Confidentialité → Micro.</translation>
    </message>
    <message>
        <source>Abbrechen</source>
        <translation>Annuler</translation>
    </message>
</context>
</TS>

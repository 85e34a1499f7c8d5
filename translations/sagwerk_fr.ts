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
        <source>Der Server lieferte statt des Modells eine Fehlerseite (HTTP %1).</source>
        <translation>Le serveur a renvoyé une page d’erreur au lieu du modèle (HTTP %1).</translation>
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
        <source>Der Server ist nicht erreichbar. Bitte die Internetverbindung prüfen.</source>
        <translation>Le serveur est injoignable. Vérifiez la connexion Internet.</translation>
    </message>
    <message>
        <source>Eine sichere Verbindung zum Server kam nicht zustande.</source>
        <translation>Impossible d’établir une connexion sécurisée avec le serveur.</translation>
    </message>
    <message>
        <source>Der Server hat nicht rechtzeitig geantwortet.</source>
        <translation>Le serveur n’a pas répondu à temps.</translation>
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
        <translation>Meilleure qualité, rapide avec une carte graphique.</translation>
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
        <source>Diese Transkription hat keinen Sprechertext.</source>
        <translation>Cette transcription n’a pas de texte par locuteur.</translation>
    </message>
    <message>
        <source>Diese Transkription hat keine Stufe %1.</source>
        <translation>Cette transcription n’a pas de niveau %1.</translation>
    </message>
    <message>
        <source>Fertig: %1</source>
        <translation>Terminé : %1</translation>
    </message>
    <message>
        <source>Übersprungen, schon im Verlauf: %1</source>
        <translation>Ignoré, déjà dans l’historique : %1</translation>
    </message>
    <message>
        <source>Fehlgeschlagen: %1: %2</source>
        <translation>Échec : %1 : %2</translation>
    </message>
    <message>
        <source>Fertig: %1 · übersprungen: %2 · fehlgeschlagen: %3</source>
        <translation>Terminés : %1 · ignorés : %2 · échecs : %3</translation>
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
        <source>Claude Opus 5 (genau)</source>
        <translation>Claude Opus 5 (précis)</translation>
    </message>
    <message>
        <source>Claude Sonnet 5 (schneller)</source>
        <translation>Claude Sonnet 5 (plus rapide)</translation>
    </message>
    <message>
        <source>Claude Haiku 4.5 (am schnellsten)</source>
        <translation>Claude Haiku 4.5 (le plus rapide)</translation>
    </message>
    <message>
        <source>OpenAI GPT-4o (genau)</source>
        <translation>OpenAI GPT-4o (précis)</translation>
    </message>
    <message>
        <source>OpenAI GPT-4o mini (schneller)</source>
        <translation>OpenAI GPT-4o mini (plus rapide)</translation>
    </message>
    <message>
        <source>Über Morvane</source>
        <translation>À propos de Morvane</translation>
    </message>
    <message>
        <source>Lokale Transkription mit whisper.cpp (Metal / Neural Engine)</source>
        <translation>Transcription locale avec whisper.cpp (CPU / Vulkan)</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
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
        <source>Aufnehmen</source>
        <translation>Enregistrer</translation>
    </message>
    <message>
        <source>Datei öffnen</source>
        <translation>Ouvrir un fichier</translation>
    </message>
    <message>
        <source>Hilfe</source>
        <translation>Aide</translation>
    </message>
    <message>
        <source>Anthropic API-Key</source>
        <translation>Clé API Anthropic</translation>
    </message>
    <message>
        <source>OpenAI API-Key</source>
        <translation>Clé API OpenAI</translation>
    </message>
    <message>
        <source>hinterlegt</source>
        <translation>enregistrée</translation>
    </message>
    <message>
        <source>Entfernen</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>%1 · %2 MB</source>
        <translation>%1 · %2 Mo</translation>
    </message>
    <message>
        <source>Modell löschen</source>
        <translation>Supprimer le modèle</translation>
    </message>
    <message>
        <source>Erneut versuchen</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>Laden fehlgeschlagen: %1</source>
        <translation>Échec du téléchargement : %1</translation>
    </message>
    <message>
        <source>Laden</source>
        <translation>Télécharger</translation>
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
        <source>Willkommen bei Sagwerk</source>
        <translation>Bienvenue dans Sagwerk</translation>
    </message>
    <message>
        <source>Aufnehmen oder Dateien ziehen – auch WhatsApp-Sprachnachrichten.</source>
        <translation>Enregistrez ou glissez des fichiers – même des messages vocaux WhatsApp.</translation>
    </message>
    <message>
        <source>Sprache aus Audio- und Videodateien in Text – vollständig lokal auf deinem Mac.</source>
        <translation>La parole de vos fichiers audio et vidéo en texte – entièrement en local sur votre ordinateur.</translation>
    </message>
    <message>
        <source>Läuft über GPU/Neural Engine – nichts wird hochgeladen.</source>
        <translation>Fonctionne sur CPU/GPU – rien n’est envoyé en ligne.</translation>
    </message>
    <message>
        <source>Sprechererkennung und mitlaufender Wort-Cursor.</source>
        <translation>Détection des locuteurs et curseur qui suit chaque mot.</translation>
    </message>
    <message>
        <source>Optionale KI-Textüberarbeitung.</source>
        <translation>Révision du texte par IA en option.</translation>
    </message>
    <message>
        <source>Sprachmodell laden</source>
        <translation>Télécharger un modèle vocal</translation>
    </message>
    <message>
        <source>Zum Transkribieren braucht die App mindestens ein Modell. Empfohlen ist **Small** – ein guter Kompromiss aus Tempo und Genauigkeit. Alles wird nur einmal geladen und läuft dann lokal.</source>
        <translation>Pour transcrire, l’application a besoin d’au moins un modèle. Nous recommandons **Small** – un bon compromis entre vitesse et précision. Tout est téléchargé une seule fois, puis fonctionne en local.</translation>
    </message>
    <message>
        <source>Bereit – du kannst fortfahren.</source>
        <translation>Prêt – vous pouvez continuer.</translation>
    </message>
    <message>
        <source>Lade mindestens ein Modell, um fortzufahren.</source>
        <translation>Téléchargez au moins un modèle pour continuer.</translation>
    </message>
    <message>
        <source>KI aktivieren (optional)</source>
        <translation>Activer l’IA (facultatif)</translation>
    </message>
    <message>
        <source>Für die optionale Textüberarbeitung und Sprechernamen kannst du einen Key von **Anthropic** und/oder **OpenAI** hinterlegen und das aktive Modell wählen. Transkribieren funktioniert auch ganz ohne KI.</source>
        <translation>Pour la révision facultative du texte et les noms des locuteurs, vous pouvez enregistrer une clé **Anthropic** et/ou **OpenAI** et choisir le modèle actif. La transcription fonctionne aussi entièrement sans IA.</translation>
    </message>
    <message>
        <source>Aktives Modell</source>
        <translation>Modèle actif</translation>
    </message>
    <message>
        <source>Alles bereit!</source>
        <translation>Tout est prêt !</translation>
    </message>
    <message>
        <source>Zieh eine Audio- oder Videodatei ins Fenster oder nimm etwas auf. Weitere Modelle, die Neural Engine und einen KI-Key findest du jederzeit unter „Modelle &amp; Einstellungen“.</source>
        <translation>Glissez un fichier audio ou vidéo dans la fenêtre, ou enregistrez quelque chose. D’autres modèles et une clé d’IA vous attendent à tout moment sous « Modèles et réglages ».</translation>
    </message>
    <message>
        <source>Zurück</source>
        <translation>Retour</translation>
    </message>
    <message>
        <source>Später</source>
        <translation>Plus tard</translation>
    </message>
    <message>
        <source>Los geht&apos;s</source>
        <translation>C’est parti</translation>
    </message>
    <message>
        <source>Fertig</source>
        <translation>Terminé</translation>
    </message>
    <message>
        <source>Weiter</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>Einstellungen</source>
        <translation>Paramètres</translation>
    </message>
    <message>
        <source>Modelle</source>
        <translation>Modèles</translation>
    </message>
    <message>
        <source>Für die Transkription – lokal, einmalig herunterladen. Größere Modelle sind genauer, aber langsamer. Mit einer Vulkan-fähigen Grafikkarte rechnet die Erkennung dort, sonst auf dem Prozessor.</source>
        <translation>Pour la transcription – téléchargés une seule fois, utilisés en local. Les modèles plus grands sont plus précis, mais plus lents. Avec une carte graphique compatible Vulkan, la reconnaissance y est calculée, sinon sur le processeur.</translation>
    </message>
    <message>
        <source>KI-Textüberarbeitung &amp; Sprechernamen</source>
        <translation>Révision par IA et noms des locuteurs</translation>
    </message>
    <message>
        <source>Optional. Für die KI-Überarbeitung und die Namensergänzung bei der Sprechererkennung. Du kannst beide Anbieter pflegen und das aktive Modell wählen. Keys liegen sicher im Schlüsselbund und gehen nur an den jeweiligen Anbieter.</source>
        <translation>Facultatif. Pour la révision par IA et l’ajout des noms lors de la détection des locuteurs. Vous pouvez gérer les deux fournisseurs et choisir le modèle actif. Les clés sont conservées en sécurité dans le trousseau et ne sont envoyées qu’à leur fournisseur.</translation>
    </message>
    <message>
        <source>Für das aktive Modell ist noch kein %1-Key hinterlegt.</source>
        <translation>Aucune clé %1 n’est encore enregistrée pour le modèle actif.</translation>
    </message>
    <message>
        <source>App-Sprache</source>
        <translation>Langue de l’application</translation>
    </message>
    <message>
        <source>System (macOS)</source>
        <translation>Système</translation>
    </message>
    <message>
        <source>Beta-Funktionen</source>
        <translation>Fonctions bêta</translation>
    </message>
    <message>
        <source>Interview: Live-Sprechererkennung</source>
        <translation>Interview : détection des locuteurs en direct</translation>
    </message>
    <message>
        <source>Diarisiert während des Interviews periodisch – Sprecher-Labels erscheinen und verschieben sich noch. Experimentell, kostet Rechenleistung. Ohne diese Option kannst du Sprecher nach der Aufnahme wie gewohnt erkennen.</source>
        <translation>Sépare périodiquement les locuteurs pendant l’interview – les étiquettes apparaissent et peuvent encore bouger. Expérimental, consomme de la puissance de calcul. Sans cette option, vous pouvez détecter les locuteurs après l’enregistrement, comme d’habitude.</translation>
    </message>
    <message>
        <source>Änderungen gelten sofort.</source>
        <translation>Les modifications s’appliquent immédiatement.</translation>
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
    <message numerus="yes">
        <source>%n Threads</source>
        <translation>
            <numerusform>%n thread</numerusform>
            <numerusform>%n threads</numerusform>
        </translation>
    </message>
    <message>
        <source>Audio- und Videodateien</source>
        <translation>Fichiers audio et vidéo</translation>
    </message>
    <message>
        <source>Umbenennen…</source>
        <translation>Renommer…</translation>
    </message>
    <message>
        <source>Umbenennen</source>
        <translation>Renommer</translation>
    </message>
    <message>
        <source>Name im Verlauf:</source>
        <translation>Nom dans l’historique :</translation>
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
        <source>Verlauf durchsuchen</source>
        <translation>Rechercher dans l’historique</translation>
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
        <source>Stopp &amp; Transkribieren</source>
        <translation>Arrêter et transcrire</translation>
    </message>
    <message>
        <source>Aufnahme starten</source>
        <translation>Démarrer l’enregistrement</translation>
    </message>
    <message>
        <source>Kein Mikrofon-Zugriff. Bitte in Systemeinstellungen → Datenschutz → Mikrofon erlauben.</source>
        <translation>Pas d’accès au micro. Branchez un micro et choisissez-le comme entrée dans les paramètres audio du bureau.</translation>
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
    <message numerus="yes">
        <source>%n Dateien</source>
        <translation>
            <numerusform>%n fichier</numerusform>
            <numerusform>%n fichiers</numerusform>
        </translation>
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
        <source>Audio aufnehmen</source>
        <translation>Enregistrer de l’audio</translation>
    </message>
    <message>
        <source>Modell „%1“ importiert: %2</source>
        <translation>Modèle « %1 » importé : %2</translation>
    </message>
    <message>
        <source>Kein Whisper-Modell gefunden: %1</source>
        <translation>Aucun modèle Whisper trouvé : %1</translation>
    </message>
    <message>
        <source>Die Modelldatei ist beschädigt oder unvollständig: %1</source>
        <translation>Le fichier du modèle est endommagé ou incomplet : %1</translation>
    </message>
    <message>
        <source>„%1“ ist ein rein englisches Modell; Sagwerk führt nur mehrsprachige Modelle.</source>
        <translation>« %1 » est un modèle uniquement anglais ; Sagwerk ne propose que des modèles multilingues.</translation>
    </message>
    <message>
        <source>Das Modell „%1“ passt zu keinem Modell des Katalogs: %2.</source>
        <translation>Le modèle « %1 » ne correspond à aucun modèle du catalogue : %2.</translation>
    </message>
    <message>
        <source>Das Modell konnte nicht im Modellordner gespeichert werden: %1</source>
        <translation>Impossible d’enregistrer le modèle dans le dossier des modèles : %1</translation>
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
        <source>Ersetzen</source>
        <translation>Remplacer</translation>
    </message>
    <message numerus="yes">
        <source>%n Stelle(n) werden ersetzt</source>
        <translation>
            <numerusform>%n occurrence sera remplacée</numerusform>
            <numerusform>%n occurrences seront remplacées</numerusform>
        </translation>
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
        <source>Stufe %1…</source>
        <translation>Niveau %1…</translation>
    </message>
    <message>
        <source>KI-Überarbeitung</source>
        <translation>Révision par IA</translation>
    </message>
    <message>
        <source>Stufe 1: schonend · Stufe 2: gründlich, Reihenfolge bleibt · Stufe 3: komplett neu, auch chronologisch</source>
        <translation>Niveau 1 : léger · Niveau 2 : approfondi, l’ordre est conservé · Niveau 3 : entièrement nouveau, aussi chronologique</translation>
    </message>
    <message>
        <source>API-Key nötig (Einstellungen)</source>
        <translation>Clé API requise (Réglages)</translation>
    </message>
    <message>
        <source>leicht geglättet</source>
        <translation>légèrement lissé</translation>
    </message>
    <message>
        <source>überarbeitet</source>
        <translation>révisé</translation>
    </message>
    <message>
        <source>komplett neu</source>
        <translation>entièrement nouveau</translation>
    </message>
    <message>
        <source>Stufe %1 · %2</source>
        <translation>Niveau %1 · %2</translation>
    </message>
    <message numerus="yes">
        <source>%n Sprecher</source>
        <translation>
            <numerusform>%n locuteur</numerusform>
            <numerusform>%n locuteurs</numerusform>
        </translation>
    </message>
    <message>
        <source>Neu erkennen</source>
        <translation>Détecter à nouveau</translation>
    </message>
    <message>
        <source>Sprecher erkennen</source>
        <translation>Détecter les locuteurs</translation>
    </message>
    <message>
        <source>Trennt Sprecher über die Stimme; KI ergänzt Namen/Rollen.</source>
        <translation>Sépare les locuteurs par la voix ; l’IA ajoute noms/rôles.</translation>
    </message>
    <message>
        <source>Trennt Sprecher über die Stimme. Ein API-Key ergänzt Namen/Rollen.</source>
        <translation>Sépare les locuteurs par la voix. Une clé d’API ajoute noms/rôles.</translation>
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
        <source>Untertitel (.vtt)</source>
        <translation>Sous-titres (.vtt)</translation>
    </message>
    <message>
        <source>JSON (.json)</source>
        <translation>JSON (.json)</translation>
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
        <source>Sprecher umbenennen</source>
        <translation>Renommer l’intervenant</translation>
    </message>
    <message>
        <source>Neuer Name für „%1“:</source>
        <translation>Nouveau nom pour « %1 » :</translation>
    </message>
    <message>
        <source>Korrektur erstellen…</source>
        <translation>Créer une correction…</translation>
    </message>
    <message>
        <source>Sprecher umbenennen…</source>
        <translation>Renommer l’intervenant…</translation>
    </message>
    <message>
        <source>Dieses Format kann macOS nicht direkt dekodieren (z. B. Opus aus WhatsApp/Telegram). Bitte die Datei vorher in ein gängiges Format wie m4a oder mp3 umwandeln.</source>
        <translation>Sagwerk ne peut pas décoder ce fichier directement, et le programme ffmpeg est absent. Installez ffmpeg ou convertissez d’abord le fichier dans un format courant comme m4a ou mp3.</translation>
    </message>
    <message>
        <source>Die Datei ist beschädigt oder enthält keine lesbare Tonspur.</source>
        <translation>Le fichier est endommagé ou ne contient aucune piste audio lisible.</translation>
    </message>
    <message>
        <source>Kein API-Key für den gewählten Anbieter hinterlegt. Bitte in den Einstellungen eintragen.</source>
        <translation>Aucune clé API enregistrée pour le fournisseur choisi. Veuillez en saisir une dans les Réglages.</translation>
    </message>
    <message>
        <source>Die Anfrage wurde vom Modell abgelehnt.</source>
        <translation>Le modèle a refusé la requête.</translation>
    </message>
    <message>
        <source>Unerwartete Antwort der API.</source>
        <translation>Réponse inattendue de l’API.</translation>
    </message>
    <message>
        <source>Aufnahme konnte nicht gestartet werden.</source>
        <translation>L’enregistrement n’a pas pu démarrer.</translation>
    </message>
    <message>
        <source>Aufnahme wird abgeschlossen…</source>
        <translation>Finalisation de l’enregistrement…</translation>
    </message>
    <message>
        <source>Wird abgeschlossen…</source>
        <translation>Finalisation…</translation>
    </message>
    <message>
        <source>Stopp &amp; Speichern</source>
        <translation>Arrêter et enregistrer</translation>
    </message>
    <message>
        <source>Transkribiert live mit; Sprecher-Labels erscheinen und aktualisieren sich während der Aufnahme.</source>
        <translation>Transcription en direct ; les étiquettes des intervenants apparaissent et se mettent à jour pendant l’enregistrement.</translation>
    </message>
    <message>
        <source>Interview-Modus</source>
        <translation>Mode interview</translation>
    </message>
    <message>
        <source>Sprecher</source>
        <translation>Intervenants</translation>
    </message>
    <message>
        <source>Warte auf die ersten Wörter…</source>
        <translation>En attente des premiers mots…</translation>
    </message>
    <message>
        <source>Sprecher werden erkannt…</source>
        <translation>Détection des locuteurs…</translation>
    </message>
    <message>
        <source>Stimmen trennen… %1 %</source>
        <translation>Séparation des voix… %1 %</translation>
    </message>
    <message>
        <source>Bereite Audio auf…</source>
        <translation>Préparation de l’audio…</translation>
    </message>
    <message>
        <source>KI ergänzt Namen und Rollen…</source>
        <translation>L’IA ajoute les noms et les rôles…</translation>
    </message>
    <message>
        <source>Nur eine Stimme erkannt. Sind es mehr, wähle ihre Anzahl und erkenne neu.</source>
        <translation>Une seule voix détectée. S’il y en a plus, choisissez leur nombre et relancez la détection.</translation>
    </message>
    <message>
        <source>Der Server lieferte keine Modelldatei.</source>
        <translation>Le serveur n’a pas fourni de fichier de modèle.</translation>
    </message>
    <message>
        <source>Sprecher-Modelle konnten nicht geladen werden: %1</source>
        <translation>Les modèles de locuteurs n’ont pas pu être téléchargés : %1</translation>
    </message>
    <message>
        <source>Lade Sprecher-Modelle (einmalig)…</source>
        <translation>Chargement des modèles de locuteurs (une seule fois)…</translation>
    </message>
    <message>
        <source>Sprecher-Modelle konnten nicht geladen werden.</source>
        <translation>Les modèles de locuteurs n’ont pas pu être chargés.</translation>
    </message>
    <message>
        <source>Sprechertrennung fehlgeschlagen</source>
        <translation>La séparation des locuteurs a échoué</translation>
    </message>
    <message>
        <source>Programm für die Sprechertrennung nicht gefunden (App beschädigt?).</source>
        <translation>Programme de séparation des locuteurs introuvable (application endommagée ?).</translation>
    </message>
    <message>
        <source>Die Liste konnte nicht gelesen werden.</source>
        <translation>La liste n’a pas pu être lue.</translation>
    </message>
    <message>
        <source>Datei nicht gefunden.</source>
        <translation>Fichier introuvable.</translation>
    </message>
    <message>
        <source>Der Anteil muss K/N sein (0 ≤ K &lt; N) oder auto.</source>
        <translation>La part doit être K/N (0 ≤ K &lt; N) ou auto.</translation>
    </message>
    <message>
        <source>Die Zahl der Anteile fehlt (SAGWERK_SHARD_COUNT).</source>
        <translation>Le nombre de parts manque (SAGWERK_SHARD_COUNT).</translation>
    </message>
    <message>
        <source>Kein Planer gibt einen Anteil vor (SLURM_ARRAY_TASK_ID, JOB_COMPLETION_INDEX, SAGWERK_SHARD_INDEX oder PARALLEL_SEQ).</source>
        <translation>Aucun planificateur n’indique de part (SLURM_ARRAY_TASK_ID, JOB_COMPLETION_INDEX, SAGWERK_SHARD_INDEX ou PARALLEL_SEQ).</translation>
    </message>
    <message>
        <source>Die Datei konnte nicht gelesen werden.</source>
        <translation>Le fichier n’a pas pu être lu.</translation>
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
        <translation>en %1 s</translation>
    </message>
    <message>
        <source>Keine Treffer</source>
        <translation>Aucun résultat</translation>
    </message>
    <message numerus="yes">
        <source>%1 von %n</source>
        <translation>
            <numerusform>%1 sur %n</numerusform>
            <numerusform>%1 sur %n</numerusform>
        </translation>
    </message>
    <message>
        <source>Im Text suchen</source>
        <translation>Rechercher dans le texte</translation>
    </message>
    <message>
        <source>Vorheriger Treffer (Umschalt+Eingabe)</source>
        <translation>Résultat précédent (Maj+Entrée)</translation>
    </message>
    <message>
        <source>Nächster Treffer (Eingabe, F3)</source>
        <translation>Résultat suivant (Entrée, F3)</translation>
    </message>
    <message>
        <source>Ab diesem Treffer abspielen (Alt+Eingabe)</source>
        <translation>Lire à partir de ce résultat (Alt+Entrée)</translation>
    </message>
    <message>
        <source>Suche schließen (Esc)</source>
        <translation>Fermer la recherche (Échap)</translation>
    </message>
    <message>
        <source>Whisper-Modelle (*.bin)</source>
        <translation>Modèles Whisper (*.bin)</translation>
    </message>
    <message>
        <source>Alle Dateien (*)</source>
        <translation>Tous les fichiers (*)</translation>
    </message>
    <message>
        <source>Modell importieren</source>
        <translation>Importer un modèle</translation>
    </message>
    <message>
        <source>Ein Whisper-Modell von der Festplatte übernehmen: eine whisper.cpp-Datei oder einen CTranslate2-Modellordner</source>
        <translation>Reprendre un modèle Whisper depuis le disque : un fichier whisper.cpp ou un dossier de modèle CTranslate2</translation>
    </message>
    <message>
        <source>Modelldatei…</source>
        <translation>Fichier de modèle…</translation>
    </message>
    <message>
        <source>Modellordner (CTranslate2)…</source>
        <translation>Dossier de modèle (CTranslate2)…</translation>
    </message>
    <message>
        <source>Wartet</source>
        <translation>En attente</translation>
    </message>
    <message>
        <source>Läuft · %1 %</source>
        <translation>En cours · %1 %</translation>
    </message>
    <message>
        <source>Schon im Verlauf</source>
        <translation>Déjà dans l’historique</translation>
    </message>
    <message>
        <source>Fehlgeschlagen</source>
        <translation>Échec</translation>
    </message>
    <message>
        <source>Abgebrochen</source>
        <translation>Annulé</translation>
    </message>
    <message>
        <source>„%1“ abbrechen</source>
        <translation>Annuler « %1 »</translation>
    </message>
    <message>
        <source>Öffnen</source>
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>„%1“ öffnen</source>
        <translation>Ouvrir « %1 »</translation>
    </message>
    <message>
        <source>Fortschritt von „%1“</source>
        <translation>Progression de « %1 »</translation>
    </message>
    <message>
        <source>Warteschlange</source>
        <translation>File d’attente</translation>
    </message>
    <message>
        <source>Dateien werden transkribiert</source>
        <translation>Transcription des fichiers en cours</translation>
    </message>
    <message>
        <source>Warteschlange abgeschlossen</source>
        <translation>File d’attente terminée</translation>
    </message>
    <message numerus="yes">
        <source>%1 von %n Dateien erledigt</source>
        <translation>
            <numerusform>%1 sur %n fichier traité</numerusform>
            <numerusform>%1 sur %n fichiers traités</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n fehlgeschlagen</source>
        <translation>
            <numerusform>%n en échec</numerusform>
            <numerusform>%n en échec</numerusform>
        </translation>
    </message>
    <message>
        <source>Liste leeren</source>
        <translation>Vider la liste</translation>
    </message>
    <message>
        <source>Alle abbrechen</source>
        <translation>Tout annuler</translation>
    </message>
</context>
</TS>

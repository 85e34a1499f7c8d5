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
</context>
</TS>

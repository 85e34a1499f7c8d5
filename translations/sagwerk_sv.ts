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
</context>
</TS>

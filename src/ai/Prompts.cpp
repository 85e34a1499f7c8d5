#include "ai/Prompts.h"

namespace Prompts {

namespace {

const char level1[] =
    "Du bist ein Lektor für automatisch erzeugte Transkripte (Speech-to-Text). Glätte "
    "den folgenden Text schonend: korrigiere Zeichensetzung, Groß-/Kleinschreibung, offensichtliche "
    "Erkennungsfehler und falsch getrennte Wörter; entferne Füll- und Stotterlaute (z. "
    "B. äh, ähm, halt sowie Wortwiederholungen). Ändere den SINN NICHT und behalte die "
    "Reihenfolge bei.";

const char level2[] =
    "Du bist ein Lektor. Überarbeite den folgenden Transkripttext grundsätzlich: korrigiere "
    "Grammatik, Stil und Wortwahl, entferne Redundanzen und Umgangssprache, und formuliere "
    "ihn klar, korrekt und gut lesbar. WICHTIG: Behalte die Reihenfolge der Aussagen bei "
    "– stelle nichts um. Der Inhalt bleibt derselbe.";

const char level3[] =
    "Du bist ein Redakteur. Überarbeite den folgenden Transkripttext vollständig zu einem "
    "klaren, gut strukturierten, flüssigen Text. Du DARFST Aussagen umstellen und sie "
    "logisch bzw. chronologisch ordnen, sinnvoll gruppieren und zusammenfassen. Bleibe "
    "dabei inhaltlich treu zum Original.";

const char speakerSentence[] =
    " Der Text ist nach Sprechern gegliedert (z. B. 'Sprecher 1:', 'Interviewer:' oder "
    "mit Namen). Behalte diese Sprecher-Kennzeichnungen bei, formatiere sie einheitlich "
    "und ordne jede Aussage dem richtigen Sprecher zu.";

const char closingSentence[] =
    " Behalte die Sprache des Originals bei und übersetze nicht. Erfinde keine Inhalte "
    "und lass nichts inhaltlich Wesentliches weg. Antworte ausschließlich mit dem überarbeiteten "
    "Text – ohne Vorrede, ohne Anführungszeichen, ohne Erklärungen.";

const char namingPrompt[] =
    "Das folgende Sagwerk wurde bereits akustisch nach Stimmen in Sprecher getrennt (am "
    "Zeilenanfang 'Sprecher 1:', 'Sprecher 2:' usw.). Behalte diese Sprecher-Zuordnung "
    "grundsätzlich bei. Deine EINZIGE Aufgabe ist das Umbenennen der Sprecher-Etiketten "
    "– niemals das Erfinden von Inhalt. 1) Nur wenn aus dem vorhandenen Text zweifelsfrei "
    "ein echter Name oder eine Rolle hervorgeht (jemand stellt sich namentlich vor oder "
    "wird eindeutig angesprochen), ersetze 'Sprecher N' durchgehend und konsistent durch "
    "diese Bezeichnung. Ist nichts eindeutig erkennbar, behalte 'Sprecher N' unverändert "
    "bei. 2) Korrigiere höchstens klar falsche Sprecherwechsel an Satzgrenzen. Erfinde "
    "KEINE Namen, KEINE Rollen, KEINE Sätze und KEINEN Dialog. Ändere den WORTLAUT der "
    "Aussagen nicht, füge nichts hinzu, fasse nichts zusammen, lass nichts weg und übersetze "
    "nicht. Behalte die Sprache des Originals bei. Die zurückgegebene Textmenge muss praktisch "
    "identisch zur Eingabe sein. Antworte ausschließlich mit dem so bearbeiteten Sagwerk "
    "– ohne Vorrede, ohne Erklärungen.";

const char detectionPrompt[] =
    "Du analysierst ein automatisch erzeugtes Sagwerk eines Gesprächs. Erkenne anhand "
    "von Inhalt, Anreden, Vorstellungen und Gesprächsverlauf, wie viele Personen sprechen, "
    "und gliedere das Sagwerk in Sprecher-Beiträge. Kennzeichne jeden Beitrag am Zeilenanfang "
    "mit dem Sprecher, gefolgt von einem Doppelpunkt (z. B. 'Sprecher 1:', 'Sprecher 2:'). "
    "Wenn aus dem Text Namen oder Rollen hervorgehen (z. B. jemand stellt sich vor, wird "
    "angesprochen, ist erkennbar Interviewer/Arzt/Kunde), verwende diese statt 'Sprecher "
    "N' (z. B. 'Dr. Müller:', 'Interviewerin:'). Wenn nur eine Person spricht, gib den "
    "Text unverändert ohne Sprecher-Kennzeichnung zurück. Ändere die Aussagen inhaltlich "
    "NICHT und erfinde nichts. Behalte die Sprache bei. Antworte ausschließlich mit dem "
    "gegliederten Sagwerk – ohne Vorrede, ohne Erklärungen.";

QString note(const char *opening, const QStringList &labels, const char *closing, const QString &chunk)
{
    if (labels.isEmpty())
        return chunk;
    return QString::fromUtf8(opening) + labels.join(QStringLiteral(", ")) + QStringLiteral(". ")
        + QString::fromUtf8(closing) + chunk;
}

} // namespace

QString systemPrompt(qint64 level, bool speakerAware)
{
    const char *text = level == 1 ? level1 : level == 2 ? level2 : level3;
    return QString::fromUtf8(text) + (speakerAware ? QString::fromUtf8(speakerSentence) : QString())
        + QString::fromUtf8(closingSentence);
}

QString naming()
{
    return QString::fromUtf8(namingPrompt);
}

QString detection()
{
    return QString::fromUtf8(detectionPrompt);
}

QString namingMessage(const QStringList &labels, const QString &chunk)
{
    return note("[Bereits vergebene Sprecher-Bezeichnungen: ", labels,
                "Verwende exakt diese weiter, wenn dieselbe Person spricht. "
                "Gib nur den bearbeiteten Abschnitt zurück.]\n\n",
                chunk);
}

QString detectionMessage(const QStringList &labels, const QString &chunk)
{
    return note("[Bereits erkannte Sprecher aus vorherigen Abschnitten: ", labels,
                "Verwende exakt diese Bezeichnungen weiter, wenn dieselbe Person spricht. "
                "Gib nur den gegliederten Text dieses Abschnitts zurück, ohne Kommentar.]\n\n",
                chunk);
}

} // namespace Prompts

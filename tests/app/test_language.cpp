// Switching the interface language while the program runs. CTest runs this program
// with Swedish as the system's language, again with German ahead of English, and with
// Japanese, which the program does not speak; SAGWERK_SYSTEM_LANGUAGE says which.
#include "Media.h"

#include "app/LanguageManager.h"
#include "engine/Decoder.h"
#include "engine/EngineError.h"
#include "review/TranscriptLines.h"

#include <QCoreApplication>
#include <QEvent>
#include <QScopeGuard>

#include <gtest/gtest.h>

namespace {

QString lookup(const char *german)
{
    return QCoreApplication::translate("Sagwerk", german);
}

// Counts the LanguageChange events that windows retranslate on.
class LanguageChanges : public QObject {
public:
    LanguageChanges() { qApp->installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (object == qApp && event->type() == QEvent::LanguageChange)
            ++count;
        return false;
    }
};

} // namespace

TEST(Language, SwitchesWhileRunning)
{
    LanguageManager &manager = LanguageManager::instance();
    manager.setLanguage(QStringLiteral("de"));
    int notified = 0;
    QObject receiver; // ends the connection with this test
    QObject::connect(&manager, &LanguageManager::languageChanged, &receiver, [&] { ++notified; });
    LanguageChanges changes;

    const QString cancelled = QStringLiteral("Abgebrochen.");
    const struct {
        QString code, text;
    } steps[] = {{"en", "Cancelled."}, {"fr", "Annulé."}, {"sv", "Avbrutet."}, {"de", cancelled}};
    int step = 0;
    for (const auto &[code, text] : steps) {
        SCOPED_TRACE(code.toStdString());
        manager.setLanguage(code);
        ++step;
        EXPECT_EQ(lookup("Abgebrochen."), text);
        EXPECT_EQ(manager.language(), code);
        EXPECT_EQ(manager.appLocale(), QLocale(code));
        EXPECT_EQ(notified, step);
        EXPECT_GE(changes.count, step);
    }

    // The same choice again changes nothing.
    manager.setLanguage(QStringLiteral("de"));
    EXPECT_EQ(notified, step);

    // A text that no catalogue has stays German in every language.
    manager.setLanguage(QStringLiteral("fr"));
    EXPECT_EQ(lookup("Diesen Text gibt es in keinem Katalog."),
              QStringLiteral("Diesen Text gibt es in keinem Katalog."));

    // Whole messages follow the language; the fixed prefixes in front of the reason stay
    // German, and a text built earlier keeps the language it was built in.
    const QString builtInFrench = EngineError::cancelled().errorDescription();
    manager.setLanguage(QStringLiteral("en"));
    EXPECT_EQ(EngineError::noModel().errorDescription(), QStringLiteral("No model selected/installed."));
    EXPECT_EQ(EngineError::convertFailed(QStringLiteral("x")).errorDescription(),
              QStringLiteral("Audio konnte nicht nach 16 kHz konvertiert werden: x"));
    EXPECT_EQ(EngineError::transcribeFailed(QStringLiteral("x")).errorDescription(),
              QStringLiteral("Transkription fehlgeschlagen: x"));
    EXPECT_EQ(builtInFrench, QStringLiteral("Annulé."));
}

TEST(Language, SystemAndUnknownCodesFollowTheOperatingSystem)
{
    ASSERT_TRUE(qEnvironmentVariableIsSet("SAGWERK_SYSTEM_LANGUAGE"));
    const QString system = qEnvironmentVariable("SAGWERK_SYSTEM_LANGUAGE");
    // German stands in for a language the program does not speak, worded for Linux.
    const bool swedish = system == QStringLiteral("sv");
    const QString expected = swedish ? QStringLiteral("Avbrutet.") : QStringLiteral("Abgebrochen.");
    const QString reveal = swedish ? QStringLiteral("Visa i filhanteraren") : QStringLiteral("Im Dateimanager zeigen");
    LanguageManager &manager = LanguageManager::instance();

    // From a chosen language back to the system's.
    manager.setLanguage(QStringLiteral("fr"));
    ASSERT_EQ(lookup("Abgebrochen."), QStringLiteral("Annulé."));
    manager.setLanguage(QStringLiteral("system"));
    EXPECT_EQ(lookup("Abgebrochen."), expected);
    EXPECT_EQ(lookup("Im Finder zeigen"), reveal);
    EXPECT_EQ(manager.language(), QStringLiteral("system"));
    EXPECT_EQ(manager.appLocale(), QLocale::system());
    EXPECT_EQ(QLocale::languageToCode(manager.appLocale().language()), system);

    // An unknown code acts as "system", silently, yet is kept, and the locale comes from it.
    for (const QString code : {"xx", "pt_BR", ""}) {
        SCOPED_TRACE(code.toStdString());
        manager.setLanguage(QStringLiteral("fr"));
        manager.setLanguage(code);
        EXPECT_EQ(lookup("Abgebrochen."), expected);
        EXPECT_EQ(lookup("Im Finder zeigen"), reveal);
        EXPECT_EQ(manager.language(), code);
    }
    manager.setLanguage(QStringLiteral("pt_BR"));
    EXPECT_EQ(manager.appLocale(), QLocale(QStringLiteral("pt_BR")));
}

TEST(Language, PlatformTextsReadForLinuxAndTheToolkitFollows)
{
    LanguageManager &manager = LanguageManager::instance();
    Decoder::setFfmpegCandidatesForTesting(QStringList{});
    const auto restore = qScopeGuard([] { Decoder::setFfmpegCandidatesForTesting(std::nullopt); });
    const struct {
        QString code, reveal, cancel, format;
    } languages[] = {
        {"de", "Im Dateimanager zeigen", "Abbrechen", "Diese Datei kann Sagwerk nicht direkt dekodieren"},
        {"en", "Show in file manager", "Cancel", "Sagwerk cannot decode this file directly"},
        {"fr", "Afficher dans le gestionnaire de fichiers", "Annuler", "Sagwerk ne peut pas décoder ce fichier"},
        {"sv", "Visa i filhanteraren", "Avbryt", "Sagwerk kan inte avkoda den här filen"},
    };
    for (const auto &[code, reveal, cancel, format] : languages) {
        SCOPED_TRACE(code.toStdString());
        manager.setLanguage(code);
        EXPECT_EQ(lookup("Im Finder zeigen"), reveal);
        // German keeps every text that names no platform as it is.
        if (code == QStringLiteral("de")) {
            EXPECT_EQ(lookup("Abgebrochen."), QStringLiteral("Abgebrochen."));
        }
        // The toolkit's own texts, such as the buttons of its dialogs, come along.
        EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), cancel);

        // The format message is looked up when thrown; its prefix stays German.
        try {
            Decoder::decodeTo16kMonoFloats(Media::textFileNamedMp3());
            ADD_FAILURE() << "decoded a text file";
        } catch (const EngineError &e) {
            EXPECT_TRUE(e.errorDescription().startsWith(
                QStringLiteral("Audio konnte nicht nach 16 kHz konvertiert werden: ") + format))
                << e.errorDescription().toStdString();
        }
    }
}

// Counts take the singular and the plural of each language, the metadata line follows the
// language, and no catalogue says that the program itself is deleted.
TEST(Language, CountsMetadataAndTheDeleteQuestion)
{
    LanguageManager &manager = LanguageManager::instance();
    const auto restore = qScopeGuard([&] { manager.setLanguage(QStringLiteral("de")); });
    HistoryItem item;
    item.date = QDateTime(QDate(2025, 3, 14), QTime(9, 30));
    item.result.segments.resize(1);
    item.result.processingSeconds = 19.3;
    const struct {
        QString code, one, two, meta;
    } languages[] = {
        {"de", "1 Stelle wird ersetzt", "2 Stellen werden ersetzt", "14.03.2025 09:30  ·  1 Segment  ·  in 19.3 s"},
        {"en", "1 occurrence will be replaced", "2 occurrences will be replaced", "14.03.2025 09:30  ·  1 segment  ·  in 19.3 s"},
        {"fr", "1 occurrence sera remplacée", "2 occurrences seront remplacées",
         "14.03.2025 09:30  ·  1 segment  ·  en 19.3 s"},
        {"sv", "1 förekomst ersätts", "2 förekomster ersätts", "14.03.2025 09:30  ·  1 segment  ·  på 19.3 s"},
    };
    for (const auto &[code, one, two, meta] : languages) {
        SCOPED_TRACE(code.toStdString());
        manager.setLanguage(code);
        EXPECT_EQ(QCoreApplication::translate("Sagwerk", "%n Stelle(n) werden ersetzt", nullptr, 1), one);
        EXPECT_EQ(QCoreApplication::translate("Sagwerk", "%n Stelle(n) werden ersetzt", nullptr, 2), two);
        EXPECT_EQ(TranscriptLines::metaString(item), meta);
        EXPECT_FALSE(lookup("Aufnahme und Sagwerk werden dauerhaft entfernt.").contains(QStringLiteral("Sagwerk")));
    }
}

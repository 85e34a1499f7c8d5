// Switching the interface language while the program runs. CTest runs this program
// with Swedish as the system's language, and again with German ahead of English;
// SAGWERK_SYSTEM_LANGUAGE says which.
#include "app/LanguageManager.h"
#include "engine/EngineError.h"

#include <QCoreApplication>
#include <QEvent>

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
    const QString expected = system == QStringLiteral("sv") ? QStringLiteral("Avbrutet.")
                                                              : QStringLiteral("Abgebrochen.");
    LanguageManager &manager = LanguageManager::instance();

    // From a chosen language back to the system's.
    manager.setLanguage(QStringLiteral("fr"));
    ASSERT_EQ(lookup("Abgebrochen."), QStringLiteral("Annulé."));
    manager.setLanguage(QStringLiteral("system"));
    EXPECT_EQ(lookup("Abgebrochen."), expected);
    EXPECT_EQ(manager.language(), QStringLiteral("system"));
    EXPECT_EQ(manager.appLocale(), QLocale::system());
    EXPECT_EQ(QLocale::languageToCode(manager.appLocale().language()), system);

    // An unknown code acts as "system", silently, yet is kept, and the locale comes from it.
    for (const QString code : {"xx", "pt_BR", ""}) {
        SCOPED_TRACE(code.toStdString());
        manager.setLanguage(QStringLiteral("fr"));
        manager.setLanguage(code);
        EXPECT_EQ(lookup("Abgebrochen."), expected);
        EXPECT_EQ(manager.language(), code);
    }
    manager.setLanguage(QStringLiteral("pt_BR"));
    EXPECT_EQ(manager.appLocale(), QLocale(QStringLiteral("pt_BR")));
}

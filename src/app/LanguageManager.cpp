#include "app/LanguageManager.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTranslator>

namespace {

// The languages that have a catalogue; German is the source language and needs none.
const QStringList translated = {QStringLiteral("en"), QStringLiteral("fr"), QStringLiteral("sv")};
const QString german = QStringLiteral("de");

// The first of the system's interface languages that the program speaks; empty when it
// speaks none of them, so the German texts show.
QString systemLanguage()
{
    for (const QString &name : QLocale::system().uiLanguages()) {
        const QString language = QLocale::languageToCode(QLocale(name).language());
        if (language == german || translated.contains(language))
            return language;
    }
    return {};
}

// The catalogue of `language`; none for German, which is the source, or when it cannot
// be loaded.
std::unique_ptr<QTranslator> loadCatalogue(const QString &language)
{
    if (!translated.contains(language))
        return nullptr;
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(QStringLiteral(":/i18n/sagwerk_%1.qm").arg(language)))
        return nullptr;
    return translator;
}

} // namespace

LanguageManager &LanguageManager::instance()
{
    Q_ASSERT(QCoreApplication::instance());
    // A child of the application object: it lives as long as the application.
    static QPointer<LanguageManager> manager;
    if (!manager)
        manager = new LanguageManager(QCoreApplication::instance());
    return *manager;
}

QStringList LanguageManager::codes()
{
    return {QStringLiteral("system"), german, translated[0], translated[1], translated[2]};
}

LanguageManager::LanguageManager(QObject *parent) : QObject(parent) {}

LanguageManager::~LanguageManager() = default;

void LanguageManager::setLanguage(const QString &code)
{
    QString language = code == german || translated.contains(code) ? code : systemLanguage();
    std::unique_ptr<QTranslator> translator = loadCatalogue(language);
    if (!translator && translated.contains(language)) {
        // A catalogue that cannot be loaded counts as an unknown code.
        language = systemLanguage();
        translator = loadCatalogue(language);
    }
    if (!translator)
        language.clear();

    const bool changed = code != m_language || language != m_catalogue;
    m_language = code;
    if (language != m_catalogue) {
        // The old catalogue leaves first; installing the new one sends LanguageChange.
        if (m_translator)
            QCoreApplication::removeTranslator(m_translator.get());
        m_translator = std::move(translator);
        m_catalogue = language;
        if (m_translator)
            QCoreApplication::installTranslator(m_translator.get());
    }
    if (changed)
        emit languageChanged();
}

QLocale LanguageManager::appLocale() const
{
    if (m_language.isEmpty() || m_language == QLatin1String("system"))
        return QLocale::system();
    return QLocale(m_language);
}

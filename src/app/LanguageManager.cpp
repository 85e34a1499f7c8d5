#include "app/LanguageManager.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QPointer>
#include <QTranslator>

namespace {

// The languages that have a catalogue of our texts. German is the source and the
// fall-back; its catalogue holds only the texts that it words for Linux.
const QString german = QStringLiteral("de");
const QStringList languages = {german, QStringLiteral("en"), QStringLiteral("fr"), QStringLiteral("sv")};

// The first of the system's interface languages that the program speaks; German when
// it speaks none of them.
QString systemLanguage()
{
    for (const QString &name : QLocale::system().uiLanguages()) {
        const QString language = QLocale::languageToCode(QLocale(name).language());
        if (languages.contains(language))
            return language;
    }
    return german;
}

// The catalogue of `language`, or none when it cannot be loaded.
std::unique_ptr<QTranslator> loadCatalogue(const QString &language)
{
    if (!languages.contains(language))
        return nullptr;
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(QStringLiteral(":/i18n/sagwerk_%1.qm").arg(language)))
        return nullptr;
    return translator;
}

// Qt's own catalogue of `language`, where the system has it installed.
std::unique_ptr<QTranslator> loadQtCatalogue(const QString &language)
{
    // The exact file: given a name that is missing, QTranslator goes on to shorter ones.
    const QString path =
        QLibraryInfo::path(QLibraryInfo::TranslationsPath) + QStringLiteral("/qtbase_%1.qm").arg(language);
    auto translator = std::make_unique<QTranslator>();
    if (!QFileInfo::exists(path) || !translator->load(path))
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
    return QStringList{QStringLiteral("system")} + languages;
}

LanguageManager::LanguageManager(QObject *parent) : QObject(parent) {}

LanguageManager::~LanguageManager() = default;

void LanguageManager::fix(const QString &code)
{
    m_fixed = false;
    setLanguage(code);
    m_fixed = true;
}

void LanguageManager::setLanguage(const QString &code)
{
    if (m_fixed)
        return;
    QString language = languages.contains(code) ? code : systemLanguage();
    std::unique_ptr<QTranslator> translator = loadCatalogue(language);
    if (!translator && language != systemLanguage()) {
        // A catalogue that cannot be loaded counts as an unknown code.
        language = systemLanguage();
        translator = loadCatalogue(language);
    }
    if (!translator)
        language.clear();

    const bool changed = code != m_language || language != m_catalogue;
    m_language = code;
    if (language != m_catalogue) {
        // The old catalogues leave first; installing the new ones sends LanguageChange.
        for (auto *old : {&m_translator, &m_qtTranslator}) {
            if (*old)
                QCoreApplication::removeTranslator(old->get());
            old->reset();
        }
        m_translator = std::move(translator);
        m_catalogue = language;
        // Without our catalogue the German source texts show, and Qt's German goes with them.
        m_qtTranslator = loadQtCatalogue(language.isEmpty() ? german : language);
        for (QTranslator *installed : {m_qtTranslator.get(), m_translator.get()})
            if (installed)
                QCoreApplication::installTranslator(installed);
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

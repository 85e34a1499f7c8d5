#pragma once

#include <QLocale>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class QTranslator;

// The interface language, switchable while the program runs.
//
// Every interface text is looked up with Tr::tr(text),
// where `text` is the German wording: it is the key, and the result as long as no
// catalogue is installed or the catalogue lacks it. This object installs the catalogue
// of the chosen language: English, French and Swedish translate every text; the German
// one only rewords the few texts that were written for another platform (a Mac, the
// Finder), so that they read right on Linux. Qt's own catalogue of the same language
// comes with it, for the toolkit's texts (dialog buttons, file dialogs).
// Texts that stay German in every language are simply not looked up.
//
// One instance per application, on the main thread; it lives as long as the application.
class LanguageManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString language READ language NOTIFY languageChanged)
    Q_PROPERTY(QLocale appLocale READ appLocale NOTIFY languageChanged)

public:
    static LanguageManager &instance();

    // The values the settings offer: "system", then the language codes.
    static QStringList codes();

    // Switches to `code`: "system" follows the operating system's languages; "de", "en",
    // "fr" and "sv" choose one. Any other code, or a catalogue that cannot be loaded,
    // falls back to the system's language without a message; `language` keeps the code.
    void setLanguage(const QString &code);

    // Fixes the language to `code` for the life of the process: later setLanguage calls
    // change nothing. The command line follows the user's locale, whatever the
    // application's setting says.
    void fix(const QString &code);

    // The code of the last setLanguage call; empty before the first.
    QString language() const { return m_language; }

    // The locale for the windows: the system's for "system" (and before any choice),
    // otherwise the locale named by the code, whatever it is.
    QLocale appLocale() const;

    // The language whose catalogue is installed ("de", "en", "fr", "sv"); German when
    // the system speaks none of them. Empty only when no catalogue could be loaded.
    QString catalogue() const { return m_catalogue; }

signals:
    // After every change of `language` or of the installed catalogue, once the new
    // catalogue is in place; windows retranslate on it (or on QEvent::LanguageChange).
    void languageChanged();

private:
    explicit LanguageManager(QObject *parent);
    ~LanguageManager() override;

    QString m_language;
    QString m_catalogue;
    bool m_fixed = false;
    std::unique_ptr<QTranslator> m_translator;
    std::unique_ptr<QTranslator> m_qtTranslator;
};

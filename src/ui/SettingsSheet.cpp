#include "ui/SettingsSheet.h"
#include "core/Tr.h"

#include "core/AIModel.h"
#include "app/AppModel.h"
#include "app/LanguageManager.h"
#include "ui/AIModelPicker.h"
#include "ui/KeyField.h"
#include "ui/ModelImportRow.h"
#include "ui/ModelRow.h"
#include "ui/Style.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

QLabel *wrapping(QWidget *parent, const char *name = nullptr)
{
    auto *label = new QLabel(parent);
    label->setWordWrap(true);
    if (name)
        label->setObjectName(QString::fromLatin1(name));
    return label;
}

QVBoxLayout *section(QVBoxLayout *body, int spacing)
{
    auto *column = new QVBoxLayout;
    column->setSpacing(spacing);
    body->addLayout(column);
    return column;
}

} // namespace

SettingsSheet::SettingsSheet(AppModel &app, QWidget *parent) : QDialog(parent), m_app(app)
{
    setObjectName(QStringLiteral("SettingsSheet"));
    resize(560, 720);
    setMinimumSize(560, 420);

    auto *outer = Style::flushColumn(this);

    m_title = new QLabel(this);
    auto *titleRow = new QHBoxLayout;
    titleRow->setContentsMargins(24, 24, 24, 12);
    titleRow->addWidget(m_title);
    outer->addLayout(titleRow);

    auto *scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto *content = new QWidget(scroll);
    content->setObjectName(QStringLiteral("body"));
    scroll->setWidget(content);
    // The scrolled page shows the window's background, not a view's.
    scroll->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    auto *body = new QVBoxLayout(content);
    body->setContentsMargins(24, 0, 24, 16);
    body->setSpacing(20);
    outer->addWidget(scroll, 1);

    // Speech models.
    QVBoxLayout *models = section(body, 8);
    m_modelsHeading = new QLabel(content);
    m_modelsText = wrapping(content);
    m_models = new ModelList(app, content);
    models->addWidget(m_modelsHeading);
    models->addWidget(m_modelsText);
    models->addWidget(m_models);
    models->addWidget(new ModelImportRow(app, content));

    body->addWidget(Style::divider(content));

    // AI keys and the active model.
    QVBoxLayout *ai = section(body, 10);
    m_aiHeading = new QLabel(content);
    m_aiText = wrapping(content);
    m_anthropic = new KeyField(app, AIProvider::anthropic, true, content);
    m_anthropic->setObjectName(QStringLiteral("anthropicKey"));
    m_openai = new KeyField(app, AIProvider::openai, true, content);
    m_openai->setObjectName(QStringLiteral("openaiKey"));
    ai->addWidget(m_aiHeading);
    ai->addWidget(m_aiText);
    ai->addWidget(m_anthropic);
    ai->addWidget(m_openai);
    auto *active = new QVBoxLayout;
    active->setSpacing(4);
    m_activeHeading = new QLabel(content);
    auto *picker = new AIModelPicker(app, content);
    picker->setObjectName(QStringLiteral("aiModel"));
    picker->setMaximumWidth(320);
    m_keyWarning = wrapping(content, "keyWarning");
    active->addWidget(m_activeHeading);
    active->addWidget(picker, 0, Qt::AlignLeft);
    active->addWidget(m_keyWarning);
    ai->addLayout(active);

    // Interface language.
    QVBoxLayout *language = section(body, 6);
    m_languageHeading = new QLabel(content);
    m_language = new QComboBox(content);
    m_language->setObjectName(QStringLiteral("appLanguage"));
    m_language->setMaximumWidth(280);
    m_language->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    // The languages carry their own names; the first entry is translated.
    m_language->addItem(QString(), QStringLiteral("system"));
    m_language->addItem(QStringLiteral("Deutsch"), QStringLiteral("de"));
    m_language->addItem(QStringLiteral("English"), QStringLiteral("en"));
    m_language->addItem(QStringLiteral("Français"), QStringLiteral("fr"));
    m_language->addItem(QStringLiteral("Svenska"), QStringLiteral("sv"));
    connect(m_language, &QComboBox::activated, this,
            [this](int index) { m_app.setAppLanguage(m_language->itemData(index).toString()); });
    language->addWidget(m_languageHeading);
    language->addWidget(m_language, 0, Qt::AlignLeft);

    body->addWidget(Style::divider(content));

    // Beta.
    QVBoxLayout *beta = section(body, 8);
    m_betaHeading = new QLabel(content);
    m_liveSpeakers = new QCheckBox(content);
    m_liveSpeakers->setObjectName(QStringLiteral("liveSpeakers"));
    connect(m_liveSpeakers, &QCheckBox::toggled, &app, &AppModel::setInterviewLiveSpeakers);
    m_betaText = wrapping(content);
    beta->addWidget(m_betaHeading);
    beta->addWidget(m_liveSpeakers);
    beta->addWidget(m_betaText);
    body->addStretch(1);

    outer->addWidget(Style::divider(this));
    auto *buttons = new QHBoxLayout;
    buttons->setContentsMargins(16, 16, 16, 16);
    m_appliesNote = wrapping(this, "appliesNote");
    m_done = new QPushButton(this);
    m_done->setObjectName(QStringLiteral("done"));
    m_done->setDefault(true);
    connect(m_done, &QPushButton::clicked, this, &SettingsSheet::accept);
    buttons->addWidget(m_appliesNote, 1);
    buttons->addWidget(m_done);
    outer->addLayout(buttons);

    connect(this, &QDialog::finished, &app, [&app] { app.setShowSettings(false); });
    for (auto changed : {&AppModel::activeModelIdChanged, &AppModel::anthropicKeyChanged,
                         &AppModel::openaiKeyChanged, &AppModel::appLanguageChanged,
                         &AppModel::interviewLiveSpeakersChanged})
        connect(&app, changed, this, &SettingsSheet::refresh);
    connect(&LanguageManager::instance(), &LanguageManager::languageChanged, this, &SettingsSheet::refresh);
    refresh();
}

void SettingsSheet::done(int result)
{
    // Every control applies at once, so no way of closing may lose a typed key either.
    m_anthropic->saveDraft();
    m_openai->saveDraft();
    QDialog::done(result);
}

void SettingsSheet::changeEvent(QEvent *event)
{
    Style::restyleOnLookChange(event, this, &SettingsSheet::refresh);
    QDialog::changeEvent(event);
}

void SettingsSheet::refresh()
{
    using Style::TextSize;
    using Style::Tone;
    setWindowTitle(Tr::tr("Einstellungen"));
    m_title->setText(Tr::tr("Einstellungen"));
    Style::style(m_title, TextSize::title2, Tone::text, QFont::Bold);

    m_modelsHeading->setText(Tr::tr("Modelle"));
    Style::style(m_modelsHeading, TextSize::headline);
    m_modelsText->setText(Tr::tr("Für die Transkription – lokal, einmalig herunterladen. Größere Modelle sind genauer, aber "
                   "langsamer. Mit einer Vulkan-fähigen Grafikkarte rechnet die Erkennung dort, sonst auf dem "
                   "Prozessor."));
    Style::style(m_modelsText, TextSize::caption, Tone::secondary);

    m_aiHeading->setText(Tr::tr("KI-Textüberarbeitung & Sprechernamen"));
    Style::style(m_aiHeading, TextSize::headline);
    m_aiText->setText(Tr::tr("Optional. Für die KI-Überarbeitung und die Namensergänzung bei der Sprechererkennung. Du kannst "
                   "beide Anbieter pflegen und das aktive Modell wählen. Keys liegen sicher im Schlüsselbund und "
                   "gehen nur an den jeweiligen Anbieter."));
    Style::style(m_aiText, TextSize::caption, Tone::secondary);
    m_activeHeading->setText(Tr::tr("Aktives Modell"));
    Style::style(m_activeHeading, TextSize::subheadline, Tone::text, QFont::Bold);

    const bool openai = AIModel::by(m_app.activeModelId()).provider == AIProvider::openai;
    m_keyWarning->setText(Tr::tr("Für das aktive Modell ist noch kein %1-Key hinterlegt.")
                              .arg(openai ? QStringLiteral("OpenAI") : QStringLiteral("Anthropic")));
    Style::style(m_keyWarning, TextSize::caption, Tone::orange);
    m_keyWarning->setVisible(m_app.activeKey().isEmpty());

    m_languageHeading->setText(Tr::tr("App-Sprache"));
    Style::style(m_languageHeading, TextSize::headline);
    {
        const QSignalBlocker blocker(m_language);
        m_language->setItemText(0, Tr::tr("System (macOS)"));
        m_language->setCurrentIndex(m_language->findData(m_app.appLanguage()));
    }

    m_betaHeading->setText(Tr::tr("Beta-Funktionen"));
    Style::style(m_betaHeading, TextSize::headline);
    {
        const QSignalBlocker blocker(m_liveSpeakers);
        m_liveSpeakers->setText(Tr::tr("Interview: Live-Sprechererkennung"));
        m_liveSpeakers->setChecked(m_app.interviewLiveSpeakers());
    }
    m_betaText->setText(Tr::tr("Diarisiert während des Interviews periodisch – Sprecher-Labels erscheinen und verschieben sich "
                   "noch. Experimentell, kostet Rechenleistung. Ohne diese Option kannst du Sprecher nach der "
                   "Aufnahme wie gewohnt erkennen."));
    Style::style(m_betaText, TextSize::caption, Tone::secondary);

    m_appliesNote->setText(Tr::tr("Änderungen gelten sofort."));
    Style::style(m_appliesNote, TextSize::caption, Tone::secondary);
    m_done->setText(Tr::tr("Fertig"));
}

#include "ui/OnboardingWizard.h"
#include "core/Tr.h"

#include "core/AIModel.h"
#include "app/AppModel.h"
#include "app/LanguageManager.h"
#include "app/ModelStore.h"
#include "ui/AIModelPicker.h"
#include "ui/Icons.h"
#include "ui/KeyField.h"
#include "ui/ModelRow.h"
#include "ui/Style.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

QLabel *wrapping(QWidget *parent, Qt::Alignment alignment = Qt::AlignLeft)
{
    auto *label = new QLabel(parent);
    label->setWordWrap(true);
    label->setAlignment(alignment);
    return label;
}

const char *const featureSymbols[] = {"mic.fill", "cpu", "person.2.wave.2", "wand.and.stars"};

} // namespace

OnboardingWizard::OnboardingWizard(AppModel &app, QWidget *parent) : QDialog(parent), m_app(app)
{
    setObjectName(QStringLiteral("OnboardingWizard"));
    // No close button: the wizard ends through its own buttons.
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    resize(580, 600);
    setMinimumSize(580, 600);

    auto *outer = Style::flushColumn(this);
    m_pages = new QStackedWidget(this);
    outer->addWidget(m_pages, 1);

    // Step 0: welcome.
    {
        auto *page = new QWidget(m_pages);
        auto *column = new QVBoxLayout(page);
        column->setContentsMargins(28, 28, 28, 28);
        column->setSpacing(16);
        column->addStretch(1);
        m_welcomeIcon = new QLabel(page);
        m_welcomeTitle = wrapping(page, Qt::AlignHCenter);
        m_welcomeText = wrapping(page, Qt::AlignHCenter);
        column->addWidget(m_welcomeIcon, 0, Qt::AlignHCenter);
        column->addWidget(m_welcomeTitle);
        column->addWidget(m_welcomeText);
        auto *features = new QVBoxLayout;
        features->setSpacing(8);
        features->setContentsMargins(0, 4, 0, 0);
        for (int i = 0; i < 4; ++i) {
            auto *line = new QHBoxLayout;
            line->setSpacing(10);
            auto *icon = new QLabel(page);
            icon->setFixedWidth(22);
            icon->setAlignment(Qt::AlignCenter);
            auto *text = wrapping(page);
            line->addWidget(icon, 0, Qt::AlignTop);
            line->addWidget(text, 1);
            features->addLayout(line);
            m_featureIcons << icon;
            m_featureTexts << text;
        }
        // The lines are left-aligned as a block in the centred column.
        auto *centre = new QHBoxLayout;
        centre->addStretch(1);
        centre->addLayout(features, 12);
        centre->addStretch(1);
        column->addLayout(centre);
        column->addStretch(1);
        m_pages->addWidget(page);
    }

    // Step 1: speech model.
    {
        auto *page = new QWidget(m_pages);
        auto *column = new QVBoxLayout(page);
        column->setContentsMargins(28, 28, 28, 28);
        column->setSpacing(12);
        m_modelTitle = new QLabel(page);
        m_modelText = wrapping(page);
        m_modelText->setTextFormat(Qt::MarkdownText);
        auto *scroll = new QScrollArea(page);
        scroll->setFrameShape(QFrame::NoFrame);
        scroll->setWidgetResizable(true);
        scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        scroll->viewport()->setAutoFillBackground(false);
        auto *list = new ModelList(app, scroll);
        list->setAutoFillBackground(false);
        scroll->setWidget(list);
        auto *status = new QHBoxLayout;
        status->setSpacing(6);
        m_modelStatusIcon = new QLabel(page);
        m_modelStatus = new QLabel(page);
        m_modelStatus->setObjectName(QStringLiteral("modelStatus"));
        status->addWidget(m_modelStatusIcon);
        status->addWidget(m_modelStatus, 1);
        column->addWidget(m_modelTitle);
        column->addWidget(m_modelText);
        column->addWidget(scroll, 1);
        column->addLayout(status);
        m_pages->addWidget(page);
    }

    // Step 2: AI.
    {
        auto *page = new QWidget(m_pages);
        auto *column = new QVBoxLayout(page);
        column->setContentsMargins(28, 28, 28, 28);
        column->setSpacing(12);
        m_aiTitle = new QLabel(page);
        m_aiText = wrapping(page);
        m_aiText->setTextFormat(Qt::MarkdownText);
        m_anthropic = new KeyField(app, AIProvider::anthropic, false, page);
        m_anthropic->setObjectName(QStringLiteral("anthropicKey"));
        m_openai = new KeyField(app, AIProvider::openai, false, page);
        m_openai->setObjectName(QStringLiteral("openaiKey"));
        m_activeHeading = new QLabel(page);
        auto *picker = new AIModelPicker(app, page);
        picker->setObjectName(QStringLiteral("aiModel"));
        picker->setMaximumWidth(300);
        column->addWidget(m_aiTitle);
        column->addWidget(m_aiText);
        column->addWidget(m_anthropic);
        column->addWidget(m_openai);
        auto *active = new QVBoxLayout;
        active->setSpacing(4);
        active->addWidget(m_activeHeading);
        active->addWidget(picker, 0, Qt::AlignLeft);
        column->addLayout(active);
        column->addStretch(1);
        m_pages->addWidget(page);
    }

    // Step 3: done.
    {
        auto *page = new QWidget(m_pages);
        auto *column = new QVBoxLayout(page);
        column->setContentsMargins(28, 28, 28, 28);
        column->setSpacing(16);
        column->addStretch(1);
        m_doneIcon = new QLabel(page);
        m_doneTitle = wrapping(page, Qt::AlignHCenter);
        m_doneText = wrapping(page, Qt::AlignHCenter);
        column->addWidget(m_doneIcon, 0, Qt::AlignHCenter);
        column->addWidget(m_doneTitle);
        column->addWidget(m_doneText);
        column->addStretch(1);
        m_pages->addWidget(page);
    }

    outer->addWidget(Style::divider(this));
    auto *footer = new QHBoxLayout;
    footer->setContentsMargins(16, 16, 16, 16);
    m_back = new QPushButton(this);
    m_back->setObjectName(QStringLiteral("back"));
    m_later = new QPushButton(this);
    m_later->setObjectName(QStringLiteral("later"));
    m_next = new QPushButton(this);
    m_next->setObjectName(QStringLiteral("next"));
    for (QPushButton *button : {m_back, m_later})
        button->setAutoDefault(false);
    m_next->setDefault(true);
    connect(m_back, &QPushButton::clicked, this, &OnboardingWizard::back);
    connect(m_later, &QPushButton::clicked, this, &OnboardingWizard::later);
    connect(m_next, &QPushButton::clicked, this, &OnboardingWizard::next);
    footer->addWidget(m_back);
    footer->addStretch(1);
    footer->addWidget(m_later);
    footer->addWidget(m_next);
    outer->addLayout(footer);

    // The wizard closes once the application says that onboarding is over.
    connect(&app, &AppModel::showOnboardingChanged, this, [this] {
        if (!m_app.showOnboarding())
            done(QDialog::Accepted);
    });
    connect(app.modelStore(), &ModelStore::installedChanged, this, &OnboardingWizard::refresh);
    connect(&LanguageManager::instance(), &LanguageManager::languageChanged, this, &OnboardingWizard::refresh);
    refresh();
}

bool OnboardingWizard::hasModel() const
{
    return !m_app.modelStore()->installed().isEmpty();
}

void OnboardingWizard::back()
{
    if (m_step > 0)
        setStep(m_step - 1);
}

void OnboardingWizard::later()
{
    if (m_step == 1)
        m_app.finishOnboarding();
}

void OnboardingWizard::next()
{
    switch (m_step) {
    case 0:
        setStep(1);
        break;
    case 1:
        if (hasModel())
            setStep(2);
        break;
    case 2:
        saveKeys();
        setStep(3);
        break;
    default:
        m_app.finishOnboarding();
        break;
    }
}

void OnboardingWizard::reject() {}

void OnboardingWizard::closeEvent(QCloseEvent *event)
{
    event->ignore();
}

void OnboardingWizard::changeEvent(QEvent *event)
{
    Style::restyleOnLookChange(event, this, &OnboardingWizard::refresh);
    QDialog::changeEvent(event);
}

void OnboardingWizard::setStep(int step)
{
    m_step = step;
    refresh();
}

void OnboardingWizard::saveKeys()
{
    m_anthropic->saveDraft();
    m_openai->saveDraft();
}

void OnboardingWizard::refresh()
{
    using Style::TextSize;
    using Style::Tone;
    const QPalette &pal = palette();
    const qreal dpr = devicePixelRatioF();
    setWindowTitle(QStringLiteral("Sagwerk"));
    m_pages->setCurrentIndex(m_step);

    m_welcomeIcon->setPixmap(
        Icons::pixmap(QStringLiteral("waveform.circle.fill"), 60, Style::color(pal, Tone::accent), dpr));
    m_welcomeTitle->setText(Tr::tr("Willkommen bei Sagwerk"));
    Style::style(m_welcomeTitle, TextSize::largeTitle, Tone::text, QFont::Bold);
    m_welcomeText->setText(Tr::tr("Sprache aus Audio- und Videodateien in Text – vollständig lokal auf deinem Mac."));
    Style::style(m_welcomeText, TextSize::title3, Tone::secondary);
    const QString features[] = {
        Tr::tr("Aufnehmen oder Dateien ziehen – auch WhatsApp-Sprachnachrichten."),
        Tr::tr("Läuft über GPU/Neural Engine – nichts wird hochgeladen."),
        Tr::tr("Sprechererkennung und mitlaufender Wort-Cursor."),
        Tr::tr("Optionale KI-Textüberarbeitung."),
    };
    const int featureIcon = QFontMetrics(Style::font(TextSize::body)).height() + 4;
    for (int i = 0; i < 4; ++i) {
        m_featureIcons[i]->setPixmap(Icons::pixmap(QString::fromLatin1(featureSymbols[i]), featureIcon,
                                                     Style::color(pal, Tone::accent), dpr));
        m_featureTexts[i]->setText(features[i]);
        Style::style(m_featureTexts[i], TextSize::body);
    }

    m_modelTitle->setText(Tr::tr("Sprachmodell laden"));
    Style::style(m_modelTitle, TextSize::title2, Tone::text, QFont::Bold);
    m_modelText->setText(Tr::tr("Zum Transkribieren braucht die App mindestens ein Modell. Empfohlen ist **Small** – ein guter "
                   "Kompromiss aus Tempo und Genauigkeit. Alles wird nur einmal geladen und läuft dann lokal."));
    Style::style(m_modelText, TextSize::body, Tone::secondary);
    const bool ready = hasModel();
    const int statusIcon = QFontMetrics(Style::font(TextSize::body)).height();
    m_modelStatus->setText(ready ? Tr::tr("Bereit – du kannst fortfahren.")
                                 : Tr::tr("Lade mindestens ein Modell, um fortzufahren."));
    Style::style(m_modelStatus, TextSize::body, ready ? Tone::text : Tone::secondary);
    m_modelStatusIcon->setPixmap(
        Icons::pixmap(ready ? QStringLiteral("checkmark.circle.fill") : QStringLiteral("arrow.down.circle"), statusIcon,
                        Style::color(pal, ready ? Tone::green : Tone::secondary), dpr));

    m_aiTitle->setText(Tr::tr("KI aktivieren (optional)"));
    Style::style(m_aiTitle, TextSize::title2, Tone::text, QFont::Bold);
    m_aiText->setText(Tr::tr("Für die optionale Textüberarbeitung und Sprechernamen kannst du einen Key von **Anthropic** "
                   "und/oder **OpenAI** hinterlegen und das aktive Modell wählen. Transkribieren funktioniert auch "
                   "ganz ohne KI."));
    Style::style(m_aiText, TextSize::body, Tone::secondary);
    m_activeHeading->setText(Tr::tr("Aktives Modell"));
    Style::style(m_activeHeading, TextSize::subheadline, Tone::text, QFont::Bold);

    m_doneIcon->setPixmap(
        Icons::pixmap(QStringLiteral("checkmark.circle.fill"), 60, Style::color(pal, Tone::green), dpr));
    m_doneTitle->setText(Tr::tr("Alles bereit!"));
    Style::style(m_doneTitle, TextSize::largeTitle, Tone::text, QFont::Bold);
    m_doneText->setText(Tr::tr("Zieh eine Audio- oder Videodatei ins Fenster oder nimm etwas auf. Weitere Modelle, die Neural "
                   "Engine und einen KI-Key findest du jederzeit unter „Modelle & Einstellungen“."));
    Style::style(m_doneText, TextSize::title3, Tone::secondary);

    m_back->setText(Tr::tr("Zurück"));
    m_back->setVisible(m_step > 0);
    m_later->setText(Tr::tr("Später"));
    m_later->setVisible(m_step == 1);
    switch (m_step) {
    case 0: m_next->setText(Tr::tr("Los geht's")); break;
    case 3: m_next->setText(Tr::tr("Fertig")); break;
    default: m_next->setText(Tr::tr("Weiter")); break;
    }
    m_next->setEnabled(m_step != 1 || ready);
}

#include "ui/TranscribeSetupView.h"
#include "core/Tr.h"

#include "app/AppModel.h"
#include "app/ModelStore.h"
#include "ui/DropZone.h"
#include "ui/ElidedLabel.h"
#include "ui/Icons.h"
#include "ui/Style.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace {

const char *const modelLabel = QT_TRANSLATE_NOOP("Sagwerk", "Modell");
const char *const languageLabel = QT_TRANSLATE_NOOP("Sagwerk", "Sprache");
const char *const liveSpeakersLabel = QT_TRANSLATE_NOOP("Sagwerk", "Live-Sprecher (Beta)");
const char *const speakersLabel = QT_TRANSLATE_NOOP("Sagwerk", "Sprechererkennung");
const char *const countLabel = QT_TRANSLATE_NOOP("Sagwerk", "Anzahl Sprecher");

// What a kind of staged work shows: header and start button.
struct KindLook {
    QString icon;
    const char *title;
    const char *subtitle; // none for a file, which shows its name
    const char *start;
    QString startIcon;
};

KindLook lookOf(const PendingItem::Kind &kind)
{
    if (std::holds_alternative<PendingItem::File>(kind))
        return {QStringLiteral("waveform.circle.fill"), QT_TRANSLATE_NOOP("Sagwerk", "Bereit zum Transkribieren"),
                nullptr, QT_TRANSLATE_NOOP("Sagwerk", "Transkription starten"), QStringLiteral("play.fill")};
    if (std::holds_alternative<PendingItem::Recording>(kind))
        return {QStringLiteral("mic.circle.fill"), QT_TRANSLATE_NOOP("Sagwerk", "Aufnahme vorbereiten"),
                QT_TRANSLATE_NOOP("Sagwerk", "Neue Aufnahme über das Mikrofon."),
                QT_TRANSLATE_NOOP("Sagwerk", "Aufnahme starten"), QStringLiteral("record.circle")};
    return {QStringLiteral("person.2.wave.2"), QT_TRANSLATE_NOOP("Sagwerk", "Interview vorbereiten"),
            QT_TRANSLATE_NOOP("Sagwerk", "Live-Transkription während der Aufnahme."),
            QT_TRANSLATE_NOOP("Sagwerk", "Interview starten"), QStringLiteral("record.circle")};
}

// Texts marked for translation where they are defined.
QString lookup(const char *text)
{
    return Tr::tr(text);
}

// The quiet rounded surface behind the options.
class Card : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Style::withAlpha(Style::color(QApplication::palette(), Style::Tone::secondary), 0.08));
        painter.drawRoundedRect(QRectF(rect()), 12, 12);
    }
};

// A hairline between two rows.
class Divider : public QWidget {
public:
    explicit Divider(QWidget *parent) : QWidget(parent) { setFixedHeight(1); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), Style::withAlpha(Style::color(QApplication::palette(), Style::Tone::secondary), 0.35));
    }
};

} // namespace

QList<WhisperModel> TranscribeSetupView::installedModels(const ModelStore &store)
{
    QList<WhisperModel> models;
    for (const WhisperModel &model : WhisperModel::all()) {
        if (store.installed().contains(model.id))
            models.append(model);
    }
    return models;
}

void TranscribeSetupView::ensureValidModel(AppModel &app)
{
    if (app.modelStore()->installed().contains(app.speechModelId()))
        return;
    const QList<WhisperModel> models = installedModels(*app.modelStore());
    if (!models.isEmpty())
        app.setSpeechModelId(models.first().id);
}

TranscribeSetupView::TranscribeSetupView(AppModel &app, const PendingItem &pending, QWidget *parent)
    : QWidget(parent), m_app(app), m_pending(pending)
{
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(28, 28, 28, 28);
    // A column of at most 560, at the top left.
    auto *row = new QHBoxLayout;
    auto *column = new QWidget(this);
    column->setMaximumWidth(560);
    row->addWidget(column, 1);
    row->addStretch(0);
    outer->addLayout(row);
    outer->addStretch(1);

    auto *layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    // Header.
    auto *header = new QHBoxLayout;
    header->setSpacing(12);
    m_icon = new QLabel(column);
    m_icon->setFixedSize(34, 34);
    header->addWidget(m_icon, 0, Qt::AlignVCenter);
    auto *texts = new QVBoxLayout;
    texts->setSpacing(2);
    m_title = new QLabel(column);
    m_title->setFont(Style::font(Style::TextSize::title2, QFont::Bold));
    m_subtitle = new ElidedLabel(column);
    m_subtitle->setFont(Style::font(Style::TextSize::callout));
    texts->addWidget(m_title);
    texts->addWidget(m_subtitle);
    header->addLayout(texts, 1);
    layout->addLayout(header);
    layout->addSpacing(18);

    // The options card.
    m_card = new Card(column);
    auto *card = new QVBoxLayout(m_card);
    card->setContentsMargins(16, 4, 16, 4);
    card->setSpacing(0);

    auto *modelControl = new QWidget(m_card);
    auto *modelLayout = new QHBoxLayout(modelControl);
    modelLayout->setContentsMargins(0, 0, 0, 0);
    m_model = new QComboBox(modelControl);
    m_model->setMaximumWidth(300);
    m_model->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_noModel = new QLabel(modelControl);
    modelLayout->addWidget(m_model);
    modelLayout->addWidget(m_noModel);
    modelLayout->addStretch(1);
    addRow(card, modelLabel, QStringLiteral("cpu"), modelControl);

    m_language = new QComboBox(m_card);
    m_language->setMaximumWidth(200);
    addRow(card, languageLabel, QStringLiteral("globe"), m_language);

    const bool interview = std::holds_alternative<PendingItem::Interview>(pending.kind);
    if (interview) {
        m_liveSpeakers = new QCheckBox(m_card);
        m_liveSpeakers->setChecked(app.interviewLiveSpeakers());
        connect(m_liveSpeakers, &QCheckBox::toggled, &app, &AppModel::setInterviewLiveSpeakers);
        connect(&app, &AppModel::interviewLiveSpeakersChanged, this,
                [this] { m_liveSpeakers->setChecked(m_app.interviewLiveSpeakers()); });
        addRow(card, liveSpeakersLabel, QStringLiteral("person.2.wave.2"), m_liveSpeakers);
    } else {
        m_speakers = new QCheckBox(m_card);
        m_speakers->setChecked(app.speakerDetection());
        connect(m_speakers, &QCheckBox::toggled, &app, &AppModel::setSpeakerDetection);
        connect(&app, &AppModel::speakerDetectionChanged, this, [this] {
            m_speakers->setChecked(m_app.speakerDetection());
            updateRows();
        });
        addRow(card, speakersLabel, QStringLiteral("person.2.wave.2"), m_speakers);

        m_count = new QComboBox(m_card);
        m_count->setMaximumWidth(200);
        connect(m_count, &QComboBox::activated, this,
                [this](int index) { m_app.setSpeakerCount(m_count->itemData(index).toInt()); });
        connect(&app, &AppModel::speakerCountChanged, this, &TranscribeSetupView::fillCounts);
        addRow(card, countLabel, QStringLiteral("number"), m_count);
    }
    layout->addWidget(m_card);

    // The hint, when nothing can run.
    m_hint = makeModelHint(app, column);
    layout->addSpacing(12);
    layout->addWidget(m_hint, 0, Qt::AlignLeft);

    // Buttons.
    layout->addSpacing(16);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(10);
    m_cancel = new QPushButton(column);
    connect(m_cancel, &QPushButton::clicked, this, &TranscribeSetupView::cancel);
    m_start = new QPushButton(column);
    m_start->setDefault(true);
    connect(m_start, &QPushButton::clicked, this, &TranscribeSetupView::start);
    buttons->addWidget(m_cancel);
    buttons->addWidget(m_start);
    buttons->addStretch(1);
    layout->addLayout(buttons);

    auto *escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    escape->setContext(Qt::WidgetWithChildrenShortcut);
    connect(escape, &QShortcut::activated, m_cancel, &QPushButton::click);
    for (int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *go = new QShortcut(QKeySequence(key), this);
        go->setContext(Qt::WidgetWithChildrenShortcut);
        connect(go, &QShortcut::activated, m_start, [this] {
            if (m_start->isEnabled())
                m_start->click();
        });
    }

    connect(m_model, &QComboBox::activated, this,
            [this](int index) { m_app.setSpeechModelId(m_model->itemData(index).toString()); });
    connect(m_language, &QComboBox::activated, this,
            [this](int index) { m_app.setLanguage(m_language->itemData(index).toString()); });
    connect(&app, &AppModel::speechModelIdChanged, this, &TranscribeSetupView::fillModels);
    connect(&app, &AppModel::languageChanged, this, &TranscribeSetupView::fillLanguages);
    connect(app.modelStore(), &ModelStore::installedChanged, this, [this] {
        fillModels();
        updateRows();
    });

    ensureValidModel(app);
    retranslate();
    restyle();
    updateRows();
}

QWidget *TranscribeSetupView::addRow(QVBoxLayout *card, const char *label, const QString &symbol, QWidget *control)
{
    Row row{label, symbol};
    if (!m_rows.isEmpty()) {
        row.divider = new Divider(m_card);
        card->addWidget(row.divider);
    }
    row.row = new QWidget(m_card);
    auto *layout = new QHBoxLayout(row.row);
    layout->setContentsMargins(0, 12, 0, 12);
    layout->setSpacing(10);
    auto *labelBox = new QWidget(row.row);
    labelBox->setFixedWidth(200);
    auto *labelLayout = new QHBoxLayout(labelBox);
    labelLayout->setContentsMargins(0, 0, 0, 0);
    labelLayout->setSpacing(6);
    row.icon = new QLabel(labelBox);
    row.icon->setFixedSize(16, 16);
    row.text = new QLabel(labelBox);
    labelLayout->addWidget(row.icon);
    labelLayout->addWidget(row.text, 1);
    layout->addWidget(labelBox);
    control->setParent(row.row);
    layout->addWidget(control, 1, Qt::AlignLeft | Qt::AlignVCenter);
    card->addWidget(row.row);
    m_rows.append(row);
    return row.row;
}

bool TranscribeSetupView::rowShown(const QString &germanLabel) const
{
    for (const Row &row : m_rows) {
        if (QString::fromUtf8(row.label) == germanLabel)
            return !row.row->isHidden();
    }
    return false;
}

void TranscribeSetupView::updateRows()
{
    const bool none = installedModels(*m_app.modelStore()).isEmpty();
    m_model->setVisible(!none);
    m_noModel->setVisible(none);
    m_hint->setVisible(none);
    m_start->setEnabled(!none);
    for (Row &row : m_rows) {
        if (row.label != countLabel)
            continue;
        const bool shown = m_app.speakerDetection();
        row.row->setVisible(shown);
        if (row.divider)
            row.divider->setVisible(shown);
    }
}

TranscribeSetupView::TranscribeSetupView(AppModel &app, int files, std::function<void()> start,
                                         std::function<void()> cancel, QWidget *parent)
    : TranscribeSetupView(app, PendingItem{QUuid(), PendingItem::File{}}, parent)
{
    m_onStart = std::move(start);
    m_onCancel = std::move(cancel);
    setFileCount(files);
}

void TranscribeSetupView::setFileCount(int files)
{
    m_files = files;
    m_subtitle->setText(Tr::tr("%n Dateien", nullptr, m_files));
}

void TranscribeSetupView::start()
{
    ensureValidModel(m_app);
    if (m_onStart)
        m_onStart();
    else
        m_app.startPending();
}

void TranscribeSetupView::cancel()
{
    if (m_onCancel)
        m_onCancel();
    else
        m_app.setPending(std::nullopt);
}

void TranscribeSetupView::fillModels()
{
    const QSignalBlocker block(m_model);
    m_model->clear();
    for (const WhisperModel &model : installedModels(*m_app.modelStore()))
        m_model->addItem(Tr::tr("%1 · %2 MB").arg(model.name).arg(model.approxSizeMB), model.id);
    m_model->setCurrentIndex(m_model->findData(m_app.speechModelId()));
}

void TranscribeSetupView::fillLanguages()
{
    const QSignalBlocker block(m_language);
    m_language->clear();
    for (const AppModel::LanguageOption &option : AppModel::languages())
        m_language->addItem(Tr::tr(option.label.toUtf8().constData()), option.code);
    m_language->setCurrentIndex(m_language->findData(m_app.language()));
}

void TranscribeSetupView::fillCounts()
{
    if (!m_count)
        return;
    const QSignalBlocker block(m_count);
    m_count->clear();
    m_count->addItem(Tr::tr("Automatisch"), 0);
    for (int n = 2; n <= 6; ++n)
        m_count->addItem(QString::number(n), n);
    m_count->setCurrentIndex(m_count->findData(m_app.speakerCount()));
}

void TranscribeSetupView::retranslate()
{
    const KindLook look = lookOf(m_pending.kind);
    m_title->setText(lookup(look.title));
    if (m_files > 0)
        m_subtitle->setText(Tr::tr("%n Dateien", nullptr, m_files));
    else if (const auto *file = std::get_if<PendingItem::File>(&m_pending.kind))
        m_subtitle->setText(file->name);
    else
        m_subtitle->setText(lookup(look.subtitle));
    m_start->setText(lookup(look.start));
    m_cancel->setText(Tr::tr("Abbrechen"));
    m_noModel->setText(Tr::tr("Kein Modell installiert"));
    for (Row &row : m_rows)
        row.text->setText(lookup(row.label));
    if (m_count)
        m_count->setToolTip(
            Tr::tr("Wenn du die Anzahl kennst (z. B. Interview = 2), verbessert das die Trennung deutlich."));
    retranslateModelHint(m_hint);
    fillModels();
    fillLanguages();
    fillCounts();
}

void TranscribeSetupView::restyle()
{
    const QPalette &pal = QApplication::palette();
    const KindLook look = lookOf(m_pending.kind);
    m_icon->setPixmap(Icons::pixmap(look.icon, 34, Style::color(pal, Style::Tone::accent), devicePixelRatioF()));
    Style::setTextColor(m_subtitle, Style::color(pal, Style::Tone::secondary));
    Style::setTextColor(m_noModel, Style::color(pal, Style::Tone::secondary));
    m_start->setIcon(Icons::icon(look.startIcon, pal));
    for (Row &row : m_rows)
        row.icon->setPixmap(Icons::pixmap(row.symbol, 16, Style::color(pal, Style::Tone::text), devicePixelRatioF()));
    restyleModelHint(m_hint);
}

void TranscribeSetupView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    else if (event->type() == QEvent::ApplicationPaletteChange)
        restyle();
    QWidget::changeEvent(event);
}

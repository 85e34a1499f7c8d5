#include "ui/ResultView.h"
#include "core/Tr.h"

#include "app/AppModel.h"
#include "core/FileNames.h"
#include "export/DocxExporter.h"
#include "export/PDFExporter.h"
#include "review/AudioPlayer.h"
#include "review/TranscriptLayout.h"
#include "review/TranscriptLines.h"
#include "ui/CorrectionSheet.h"
#include "ui/FileManager.h"
#include "ui/FindBar.h"
#include "ui/Icons.h"
#include "ui/NameDialog.h"
#include "ui/PlayerBar.h"
#include "ui/Spinner.h"
#include "ui/Style.h"
#include "ui/TranscriptTextView.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QSaveFile>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QTextBrowser>
#include <QTimer>
#include <QToolButton>
#include <QUndoStack>
#include <QVBoxLayout>

namespace {

// A one-line label that shortens its text in the middle when it lacks room.
class MiddleElidedLabel : public QLabel {
public:
    using QLabel::QLabel;
    QSize minimumSizeHint() const override { return {40, QLabel::minimumSizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter p(this);
        p.setPen(palette().color(foregroundRole()));
        const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
        p.drawText(contentsRect(), int(alignment()), shown);
    }
};

// Writes text as UTF-8 without a byte-order mark; a failure leaves no file behind.
void writeText(const QString &path, const QString &text)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    const QByteArray bytes = text.toUtf8();
    if (file.write(bytes) == bytes.size())
        file.commit();
}

} // namespace

ResultView::ResultView(AppModel &app, QWidget *parent) : QWidget(parent), m_app(app)
{
    m_column = new QVBoxLayout(this);
    m_column->setContentsMargins(20, 20, 20, 20);
    m_column->setSpacing(12);

    auto *header = new QHBoxLayout;
    header->setSpacing(10);
    m_title = new MiddleElidedLabel(this);
    m_title->setFont(Style::font(Style::TextSize::headline));
    m_title->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_meta = new QLabel(this);
    m_meta->setFont(Style::font(Style::TextSize::caption2));
    m_meta->setForegroundRole(QPalette::PlaceholderText);
    header->addWidget(m_title, 0, Qt::AlignBaseline);
    header->addWidget(m_meta, 0, Qt::AlignBaseline);
    header->addStretch(1);
    m_column->addLayout(header);

    m_playerSlot = new QWidget(this);
    auto *playerRow = new QVBoxLayout(m_playerSlot);
    playerRow->setContentsMargins(0, 0, 0, 0);
    m_column->addWidget(m_playerSlot);

    auto *viewRow = new QHBoxLayout;
    viewRow->setSpacing(12);
    m_picker = new QWidget(this);
    m_picker->setMaximumWidth(360);
    auto *segments = new QHBoxLayout(m_picker);
    segments->setContentsMargins(0, 0, 0, 0);
    segments->setSpacing(0);
    m_pickerButtons = new QButtonGroup(this);
    m_pickerButtons->setExclusive(true);
    // The view travels as a property: the group reserves the id -1, which is the speaker view.
    connect(m_pickerButtons, &QButtonGroup::buttonClicked, this,
            [this](QAbstractButton *b) { setSelectedView(b->property("view").toLongLong()); });
    m_timestamps = new QCheckBox(this);
    m_timestamps->setChecked(true);
    connect(m_timestamps, &QCheckBox::toggled, this, &ResultView::setShowTimestamps);
    viewRow->addWidget(m_picker);
    viewRow->addWidget(m_timestamps);
    viewRow->addStretch(1);
    m_column->addLayout(viewRow);

    m_column->addWidget(Style::divider(this));

    m_findBar = new FindBar(this);
    m_findBar->hide();
    connect(m_findBar, &FindBar::queryChanged, this, [this] { runFind(false); });
    connect(m_findBar, &FindBar::step, this, &ResultView::stepFind);
    connect(m_findBar, &FindBar::playRequested, this, &ResultView::playFromMatch);
    connect(m_findBar, &FindBar::closeRequested, this, &ResultView::closeFind);
    m_column->addWidget(m_findBar);

    m_textArea = new QStackedWidget(this);
    m_textView = new TranscriptTextView(m_textArea);
    m_levelText = new QTextBrowser(m_textArea);
    m_levelText->setFrameShape(QFrame::NoFrame);
    m_levelText->setOpenLinks(false);
    m_levelText->viewport()->setAutoFillBackground(false);
    m_levelText->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_textArea->addWidget(m_textView);
    m_textArea->addWidget(m_levelText);
    m_column->addWidget(m_textArea, 1);

    m_chips = new QScrollArea(this);
    m_chips->setFixedHeight(26);
    m_chips->setFrameShape(QFrame::NoFrame);
    m_chips->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_chips->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_chips->setWidgetResizable(true);
    m_chips->viewport()->setAutoFillBackground(false);
    m_column->addWidget(m_chips);

    m_column->addWidget(Style::divider(this));

    auto *actions = new QHBoxLayout;
    actions->setSpacing(12);
    m_speakers = new QPushButton(this);
    m_speakers->setObjectName(QStringLiteral("speakerControl"));
    connect(m_speakers, &QPushButton::clicked, this, [this] {
        SpeakerJob::Overrides once;
        once.speakerCount = m_speakerCount->currentData().toInt();
        m_app.detectSpeakers(m_item, once);
    });
    // The count for this item's next run, without going through the settings or a new
    // transcription; it starts at the setting.
    m_speakerCount = new QComboBox(this);
    m_speakerCount->setObjectName(QStringLiteral("speakerCount"));
    // While the item's speakers are separated: a spinner, the status and a way to stop.
    m_speakersBusy = new QWidget(this);
    auto *speakersBusy = new QHBoxLayout(m_speakersBusy);
    speakersBusy->setContentsMargins(0, 0, 0, 0);
    speakersBusy->setSpacing(6);
    speakersBusy->addWidget(new Spinner(12, m_speakersBusy));
    m_speakersBusyText = new QLabel(m_speakersBusy);
    m_speakersBusyText->setObjectName(QStringLiteral("speakerStatus"));
    m_speakersBusyText->setFont(Style::font(Style::TextSize::caption));
    m_speakersBusyText->setForegroundRole(QPalette::PlaceholderText);
    speakersBusy->addWidget(m_speakersBusyText);
    m_speakersCancel = new QToolButton(m_speakersBusy);
    m_speakersCancel->setObjectName(QStringLiteral("speakerCancel"));
    m_speakersCancel->setAutoRaise(true);
    m_speakersCancel->setStyleSheet(QStringLiteral("QToolButton { border: none; padding: 0; }"));
    connect(m_speakersCancel, &QToolButton::clicked, &m_app, &AppModel::cancelSpeakers);
    speakersBusy->addWidget(m_speakersCancel);
    actions->addWidget(m_speakers);
    actions->addWidget(m_speakerCount);
    actions->addWidget(m_speakersBusy);
    m_ai = new QToolButton(this);
    m_ai->setObjectName(QStringLiteral("aiControl"));
    m_ai->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_ai->setPopupMode(QToolButton::InstantPopup);
    m_aiMenu = new QMenu(m_ai);
    m_ai->setMenu(m_aiMenu);
    connect(m_aiMenu, &QMenu::aboutToShow, this, &ResultView::showAIControl);
    // While a level is refined: a spinner and its level, with no way to stop it.
    m_aiBusy = new QWidget(this);
    auto *busy = new QHBoxLayout(m_aiBusy);
    busy->setContentsMargins(0, 0, 0, 0);
    busy->setSpacing(6);
    busy->addWidget(new Spinner(12, m_aiBusy));
    m_aiBusyText = new QLabel(m_aiBusy);
    m_aiBusyText->setFont(Style::font(Style::TextSize::caption));
    m_aiBusyText->setForegroundRole(QPalette::PlaceholderText);
    busy->addWidget(m_aiBusyText);
    actions->addWidget(m_ai);
    actions->addWidget(m_aiBusy);
    m_reTranscribe = new QPushButton(Icons::themed(QStringLiteral("view-refresh")), QString(), this);
    connect(m_reTranscribe, &QPushButton::clicked, this, [this] { m_app.reTranscribe(m_item); });
    m_correct = new QPushButton(Icons::themed(QStringLiteral("document-edit")), QString(), this);
    connect(m_correct, &QPushButton::clicked, this, [this] { openCorrectionSheet(m_selectedText); });
    m_copy = new QPushButton(this);
    connect(m_copy, &QPushButton::clicked, this, &ResultView::copy);
    m_export = new QToolButton(this);
    m_export->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_export->setIcon(Icons::themed(QStringLiteral("document-export")));
    m_export->setPopupMode(QToolButton::InstantPopup);
    m_exportMenu = new QMenu(m_export);
    m_export->setMenu(m_exportMenu);
    connect(m_exportMenu, &QMenu::aboutToShow, this, &ResultView::showActions);
    actions->addWidget(m_reTranscribe);
    actions->addWidget(m_correct);
    actions->addWidget(m_copy);
    actions->addWidget(m_export);
    actions->addStretch(1);
    m_column->addLayout(actions);
    m_speakerNotice = new QLabel(this);
    m_speakerNotice->setObjectName(QStringLiteral("speakerNotice"));
    m_speakerNotice->setWordWrap(true);
    m_speakerNotice->setFont(Style::font(Style::TextSize::caption));
    m_speakerNotice->setForegroundRole(QPalette::PlaceholderText);
    m_column->addWidget(m_speakerNotice);

    m_undo = new QUndoStack(this);
    QAction *undo = m_undo->createUndoAction(this);
    undo->setShortcut(QKeySequence::Undo);
    QAction *redo = m_undo->createRedoAction(this);
    redo->setShortcut(QKeySequence::Redo);
    for (QAction *a : {undo, redo}) {
        a->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        addAction(a);
    }

    auto shortcut = [this](const QKeySequence &keys, auto action) {
        auto *s = new QShortcut(keys, this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
        connect(s, &QShortcut::activated, this, action);
    };
    shortcut(QKeySequence::Find, [this] { openFind(); });
    shortcut(QKeySequence(Qt::Key_F3), [this] { m_findBar->isVisible() ? stepFind(true) : openFind(); });
    shortcut(QKeySequence(Qt::SHIFT | Qt::Key_F3), [this] { m_findBar->isVisible() ? stepFind(false) : openFind(); });
    // A text field takes its own Space first (it claims the key before shortcuts).
    shortcut(QKeySequence(Qt::Key_Space), [this] { m_player->togglePlay(); });
    shortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C), [this] { copy(); });

    connect(&m_app, &AppModel::currentChanged, this, &ResultView::takeCurrent);
    // The menu's state follows the key of the active model.
    for (auto signal : {&AppModel::anthropicKeyChanged, &AppModel::openaiKeyChanged, &AppModel::activeModelIdChanged}) {
        connect(&m_app, signal, this, &ResultView::showAIControl);
        connect(&m_app, signal, this, &ResultView::showSpeakerControl);
    }
    connect(&m_app.speakerJob(), &SpeakerJob::statusChanged, this, &ResultView::showSpeakerControl);
    connect(&m_app.speakerJob(), &SpeakerJob::noticeChanged, this, &ResultView::showSpeakerControl);

    retranslate();
    m_item = m_app.current().value_or(HistoryItem());
    startItem();
}

ResultView::~ResultView() = default;

// --- State ---

void ResultView::takeCurrent()
{
    const HistoryItem next = m_app.current().value_or(HistoryItem());
    const bool another = next.id != m_item.id;
    m_item = next;
    if (another) {
        startItem();
        return;
    }
    // The same item, changed by a job or a rule: the screen keeps its state.
    const QList<qint64> levels = m_item.smoothed.keys();
    if (levels != m_levels) {
        m_levels = levels;
        // A finished refinement is shown at once: the highest level.
        if (!levels.isEmpty())
            setSelectedView(levels.constLast());
    }
    if (m_item.speakerText != m_speakerText) {
        buildSpeakerTurns();
        // A finished speaker job is shown at once.
        if (m_speakerText)
            setSelectedView(TranscriptLines::speakerView);
    } else if (m_item.result.segments.size() != m_speakerTurnSegments) {
        // A stored item's segments come from disk after it is shown; the turns need them
        // for their times and the word cursor.
        buildSpeakerTurns();
    }
    showItem();
}

void ResultView::buildSpeakerTurns()
{
    m_speakerText = m_item.speakerText;
    m_speakerTurnSegments = m_item.result.segments.size();
    m_speakerTurns = SpeakerTurn::build(m_speakerText.value_or(QString()), m_item.result.segments);
}

void ResultView::startItem()
{
    // Another item is another screen: start values and a new player.
    const bool wasVisible = isVisible();
    delete m_playerBar;
    m_playerBar = nullptr;
    delete m_player;
    m_player = new AudioPlayer(this);
    connect(m_player, &AudioPlayer::currentTimeChanged, this, &ResultView::refreshText);
    connect(m_player, &AudioPlayer::isPlayingChanged, this, &ResultView::refreshText);
    m_playerBar = new PlayerBar(*m_player, m_playerSlot);
    m_playerSlot->layout()->addWidget(m_playerBar);

    m_undo->clear();
    m_showTimestamps = true;
    m_selectedView = TranscriptLines::originalView;
    m_selectedText.clear();
    setCopied(false);
    m_levels = m_item.smoothed.keys();
    buildSpeakerTurns();
    fillSpeakerCounts(m_app.speakerCount());
    {
        const QSignalBlocker quiet(m_timestamps);
        m_timestamps->setChecked(true);
    }
    m_textView->refresh({}); // the old text goes at once
    showItem();
    if (wasVisible) {
        if (const std::optional<QString> audio = TranscriptLines::audioURL(m_item))
            m_player->load(*audio);
    }
}

void ResultView::setShowTimestamps(bool on)
{
    if (m_showTimestamps == on)
        return;
    m_showTimestamps = on;
    const QSignalBlocker quiet(m_timestamps);
    m_timestamps->setChecked(on);
    refreshText();
}

void ResultView::setSelectedView(qint64 view)
{
    if (m_selectedView == view)
        return;
    m_selectedView = view;
    setSelectedText(QString());
    showItem();
}

void ResultView::setSelectedText(const QString &text)
{
    if (m_selectedText == text)
        return;
    m_selectedText = text;
    showCorrectButton();
    emit selectedTextChanged();
}

void ResultView::setCopied(bool copied)
{
    if (m_copied == copied)
        return;
    m_copied = copied;
    retranslate();
    emit copiedChanged();
}

QString ResultView::currentText() const
{
    return TranscriptLines::currentText(m_item, m_selectedView, m_showTimestamps);
}

QString ResultView::exportBase() const
{
    return TranscriptLines::exportBase(m_item, m_selectedView);
}

// --- What is on show ---

void ResultView::showItem()
{
    m_title->setText(m_item.fileName);
    m_title->setToolTip(m_item.fileName);
    m_meta->setText(TranscriptLines::metaString(m_item));
    m_playerSlot->setVisible(TranscriptLines::audioURL(m_item).has_value());
    showPicker();
    m_timestamps->setEnabled(!TranscriptLines::viewingLevel(m_selectedView));
    showChips();
    showActions();
    refreshText();
}

void ResultView::showPicker()
{
    const QList<qint64> views = TranscriptLines::views(m_item);
    m_picker->setVisible(m_item.speakerText.has_value() || !m_item.smoothed.isEmpty());
    QList<qint64> shown;
    for (QAbstractButton *b : m_pickerButtons->buttons())
        shown << b->property("view").toLongLong();
    if (shown != views) {
        for (QAbstractButton *b : m_pickerButtons->buttons()) {
            m_pickerButtons->removeButton(b);
            delete b;
        }
        for (qint64 view : views) {
            auto *b = new QPushButton(m_picker);
            b->setCheckable(true);
            b->setProperty("view", view);
            m_pickerButtons->addButton(b);
            m_picker->layout()->addWidget(b);
        }
    }
    for (QAbstractButton *b : m_pickerButtons->buttons()) {
        const qint64 view = b->property("view").toLongLong();
        b->setText(view == TranscriptLines::originalView ? Tr::tr("Original")
                   : view == TranscriptLines::speakerView ? Tr::tr("Sprecher")
                                                          : Tr::tr("Stufe %1").arg(view));
        b->setChecked(view == m_selectedView);
        Style::markChosen(b, view == m_selectedView);
    }
}

void ResultView::showChips()
{
    m_chips->setVisible(!m_item.corrections.isEmpty());
    auto *row = new QWidget;
    auto *chips = new QHBoxLayout(row);
    chips->setContentsMargins(0, 0, 0, 0);
    chips->setSpacing(8);
    const QColor secondary = palette().color(QPalette::PlaceholderText);
    QColor tint(52, 199, 89);
    tint.setAlphaF(0.14f);
    for (const Correction &c : m_item.corrections) {
        auto *chip = new QFrame(row);
        chip->setObjectName(QStringLiteral("chip"));
        chip->setStyleSheet(QStringLiteral("#chip { background: %1; border-radius: 11px; }").arg(tint.name(QColor::HexArgb)));
        auto *parts = new QHBoxLayout(chip);
        parts->setContentsMargins(8, 3, 8, 3);
        parts->setSpacing(4);
        auto *from = new QLabel(c.from, chip);
        QFont struck = Style::font(Style::TextSize::caption2);
        struck.setStrikeOut(true);
        from->setFont(struck);
        from->setForegroundRole(QPalette::PlaceholderText);
        from->setTextFormat(Qt::PlainText);
        auto *arrow = new QLabel(QStringLiteral("→"), chip);
        arrow->setFont(Style::font(Style::TextSize::caption2));
        arrow->setForegroundRole(QPalette::PlaceholderText);
        auto *to = new QLabel(c.to, chip);
        to->setFont(Style::font(Style::TextSize::caption2));
        to->setTextFormat(Qt::PlainText);
        auto *remove = new QToolButton(chip);
        remove->setAutoRaise(true);
        remove->setIcon(Icons::xmarkCircle(secondary));
        remove->setIconSize(QSize(12, 12));
        remove->setStyleSheet(QStringLiteral("QToolButton { border: none; padding: 0; }"));
        remove->setToolTip(Tr::tr("Korrektur entfernen"));
        const QUuid id = c.id;
        connect(remove, &QToolButton::clicked, this, [this, id] { m_app.removeCorrection(m_item.id, id); });
        parts->addWidget(from);
        parts->addWidget(arrow);
        parts->addWidget(to);
        parts->addWidget(remove);
        chips->addWidget(chip);
    }
    chips->addStretch(1);
    m_chips->setWidget(row); // deletes the previous row
}

void ResultView::showAIControl()
{
    const std::optional<qint64> running = m_item.smoothingLevel;
    m_ai->setVisible(!running);
    m_aiBusy->setVisible(running.has_value());
    if (running)
        m_aiBusyText->setText(Tr::tr("Stufe %1…").arg(*running));

    const bool hasKey = !m_app.activeKey().isEmpty();
    m_ai->setEnabled(hasKey);
    m_ai->setText(Tr::tr("KI-Überarbeitung"));
    m_ai->setIcon(Icons::icon(QStringLiteral("wand.and.stars"), palette()));
    m_ai->setToolTip(hasKey ? Tr::tr("Stufe 1: schonend · Stufe 2: gründlich, Reihenfolge bleibt · Stufe 3: komplett "
                                     "neu, auch chronologisch")
                            : Tr::tr("API-Key nötig (Einstellungen)"));
    static const char *const levelNames[] = {QT_TRANSLATE_NOOP("Sagwerk", "leicht geglättet"),
                                             QT_TRANSLATE_NOOP("Sagwerk", "überarbeitet"),
                                             QT_TRANSLATE_NOOP("Sagwerk", "komplett neu")};
    m_aiMenu->clear();
    for (qint64 level = 1; level <= 3; ++level) {
        const QString symbol = m_item.smoothed.contains(level) ? QStringLiteral("checkmark") : QStringLiteral("sparkles");
        m_aiMenu->addAction(Icons::icon(symbol, palette()),
                            Tr::tr("Stufe %1 · %2").arg(level).arg(Tr::tr(levelNames[level - 1])), this,
                            [this, level] { chooseLevel(level); });
    }
}

void ResultView::fillSpeakerCounts(int chosen)
{
    const QSignalBlocker quiet(m_speakerCount);
    m_speakerCount->clear();
    m_speakerCount->addItem(Tr::tr("Automatisch"), 0);
    for (int n = 2; n <= 8; ++n)
        m_speakerCount->addItem(Tr::tr("%n Sprecher", nullptr, n), n);
    m_speakerCount->setCurrentIndex(std::max(0, m_speakerCount->findData(chosen)));
    m_speakerCount->setToolTip(Tr::tr("Anzahl Sprecher"));
}

void ResultView::showSpeakerControl()
{
    const bool busy = m_item.speakerBusy;
    m_speakers->setVisible(!busy);
    m_speakerCount->setVisible(!busy && m_item.audioURL.has_value());
    const QString notice = busy ? QString() : m_app.speakerJob().notice(m_item.id);
    m_speakerNotice->setText(notice);
    m_speakerNotice->setVisible(!notice.isEmpty());
    m_speakersBusy->setVisible(busy);
    m_speakersBusyText->setText(m_app.speakerJob().status().value_or(Tr::tr("Sprecher werden erkannt…")));
    m_speakersCancel->setIcon(Icons::xmarkCircle(palette().color(QPalette::PlaceholderText)));
    m_speakersCancel->setToolTip(Tr::tr("Abbrechen"));

    // With audio the voices can always be separated; without, only the AI can do it.
    const bool hasKey = !m_app.activeKey().isEmpty();
    m_speakers->setEnabled(m_item.audioURL.has_value() || hasKey);
    m_speakers->setIcon(Icons::icon(QStringLiteral("person.2.wave.2"), palette()));
    m_speakers->setText(m_item.speakerText ? Tr::tr("Neu erkennen") : Tr::tr("Sprecher erkennen"));
    m_speakers->setToolTip(hasKey ? Tr::tr("Trennt Sprecher über die Stimme; KI ergänzt Namen/Rollen.")
                                  : Tr::tr("Trennt Sprecher über die Stimme. Ein API-Key ergänzt Namen/Rollen."));
}

void ResultView::chooseLevel(qint64 level)
{
    // A finished level is only shown; another one is refined.
    if (m_item.smoothed.contains(level))
        setSelectedView(level);
    else
        m_app.smooth(m_item, level);
}

void ResultView::showActions()
{
    showSpeakerControl();
    showAIControl();
    m_reTranscribe->setVisible(m_item.audioURL.has_value());
    showCorrectButton();

    m_exportMenu->clear();
    m_exportMenu->addAction(Icons::themed(QStringLiteral("text-plain")), Tr::tr("Textdatei (.txt)"), this,
                            &ResultView::exportText);
    m_exportMenu->addAction(Icons::themed(QStringLiteral("application-pdf")), Tr::tr("PDF"), this,
                            &ResultView::exportPDF);
    m_exportMenu->addAction(Icons::themed(QStringLiteral("x-office-document")), Tr::tr("Word (.docx)"), this,
                            &ResultView::exportDocx);
    QAction *srt = m_exportMenu->addAction(Icons::themed(QStringLiteral("media-view-subtitles")),
                                           Tr::tr("Untertitel (.srt)"), this, &ResultView::exportSubtitles);
    QAction *vtt = m_exportMenu->addAction(Icons::themed(QStringLiteral("media-view-subtitles")),
                                           Tr::tr("Untertitel (.vtt)"), this, &ResultView::exportVtt);
    for (QAction *subtitles : {srt, vtt})
        subtitles->setEnabled(!m_item.result.segments.isEmpty());
    m_exportMenu->addAction(Icons::themed(QStringLiteral("text-x-script")), Tr::tr("JSON (.json)"), this,
                            &ResultView::exportJson);
    if (m_item.bundleURL) {
        m_exportMenu->addSeparator();
        m_exportMenu->addAction(Icons::themed(QStringLiteral("folder")), Tr::tr("Im Finder zeigen"), this,
                                &ResultView::revealBundle);
    }
}

void ResultView::showCorrectButton()
{
    const bool has = !m_selectedText.isEmpty();
    m_correct->setEnabled(has);
    m_correct->setToolTip(has ? Tr::tr("\"%1\" korrigieren").arg(m_selectedText)
                              : Tr::tr("Zuerst ein Wort oder eine Phrase im Text markieren"));
}

void ResultView::retranslate()
{
    m_timestamps->setText(Tr::tr("Zeitmarken"));
    m_reTranscribe->setText(Tr::tr("Neu transkribieren"));
    m_reTranscribe->setToolTip(Tr::tr("Mit anderen Einstellungen (Modell/Sprache/Sprecher) erneut transkribieren"));
    m_correct->setText(Tr::tr("Korrigieren"));
    fillSpeakerCounts(m_speakerCount->count() ? m_speakerCount->currentData().toInt() : m_app.speakerCount());
    showCorrectButton();
    if (m_copied) {
        m_copy->setText(Tr::tr("Kopiert"));
        m_copy->setIcon(Icons::checkmark(palette().color(QPalette::ButtonText)));
    } else {
        m_copy->setText(Tr::tr("Kopieren"));
        m_copy->setIcon(Icons::themed(QStringLiteral("edit-copy")));
    }
    m_export->setText(Tr::tr("Exportieren"));
}

void ResultView::refreshText()
{
    refreshSurface();
    if (m_findBar->isVisible())
        runFind(true);
}

void ResultView::refreshSurface()
{
    if (TranscriptLines::surface(m_item, m_selectedView) == TranscriptLines::Surface::Level) {
        // Refined text stands as it is: no time column, no seeking, no cursor, no corrections.
        const QString text = m_item.smoothed.value(*TranscriptLines::viewingLevel(m_selectedView));
        if (m_levelShown != text) {
            m_levelShown = text;
            m_levelText->setPlainText(text);
        }
        m_textArea->setCurrentWidget(m_levelText);
        return;
    }
    m_textArea->setCurrentWidget(m_textView);
    Coordinator::View view;
    if (TranscriptLines::surface(m_item, m_selectedView) == TranscriptLines::Surface::Speaker) {
        view.lines = [this] { return TranscriptLines::speakerLines(m_speakerTurns, m_item.speakerNames); };
        view.rebuildKey = TranscriptLines::speakerRebuildKey(m_item, m_showTimestamps);
        view.onRenameHeader = [this](const QString &shown) { askSpeakerName(shown); };
    } else {
        view.lines = [this] { return TranscriptLines::originalLines(m_item.result); };
        view.rebuildKey = TranscriptLines::rebuildKey(m_item, m_showTimestamps);
    }
    view.showTime = m_showTimestamps;
    view.currentMs = TranscriptLines::currentMs(m_player->currentTime());
    view.isPlaying = m_player->isPlaying();
    view.corrections = m_item.corrections;
    view.onSeek = [this](qint64 ms, bool exact) { seekFromText(ms, exact); };
    view.onCreateCorrection = [this](const QString &text) { openCorrectionSheet(text); };
    view.onSelectionText = [this](const QString &text) { setSelectedText(text); };
    m_textView->refresh(view);
}

// --- Find ---

namespace {
constexpr qsizetype maxMarks = 300;
}

QTextEdit *ResultView::shownText() const
{
    return m_textArea->currentWidget() == m_levelText ? static_cast<QTextEdit *>(m_levelText)
                                                      : static_cast<QTextEdit *>(m_textView);
}

void ResultView::openFind()
{
    m_findBar->open();
    runFind(false);
}

void ResultView::closeFind()
{
    m_findBar->hide();
    m_matches.clear();
    m_match = -1;
    showFindMarks();
    shownText()->setFocus(Qt::OtherFocusReason);
}

void ResultView::runFind(bool textChanged)
{
    QTextEdit *edit = shownText();
    // The text view's key names its laid-out text; the level text is its own key.
    const QString key = edit == m_textView ? QStringLiteral("view|") + m_textView->coordinator().builtKey()
                                           : QStringLiteral("level|") + m_levelShown;
    if (textChanged && key == m_findKey)
        return; // a tick of the player: nothing to find anew
    if (key != m_findKey) {
        m_find = TextFind(edit->document()->toPlainText());
        m_findKey = key;
    }
    const qsizetype at = m_match >= 0 && m_match < m_matches.size() ? m_matches[m_match].start : -1;
    m_matches = m_find.find(m_findBar->query());
    m_match = -1;
    if (!m_matches.isEmpty()) {
        // Stay where the reader is: the first match at or after the last one shown.
        m_match = 0;
        while (at >= 0 && m_match + 1 < m_matches.size() && m_matches[m_match].start < at)
            ++m_match;
    }
    m_findBar->showCount(m_match, m_matches.size());
    m_findBar->setCanPlay(m_match >= 0 && edit == m_textView && TranscriptLines::audioURL(m_item));
    if (m_match >= 0)
        TranscriptTextView::scrollRangeToVisible(*edit, m_matches[m_match].start,
                                                 m_matches[m_match].end - m_matches[m_match].start);
    showFindMarks();
}

void ResultView::stepFind(bool forward)
{
    if (!m_findBar->isVisible()) {
        openFind();
        return;
    }
    m_match = TextFind::step(m_matches.size(), m_match, forward);
    m_findBar->showCount(m_match, m_matches.size());
    if (m_match < 0)
        return;
    const Corrections::Range &r = m_matches[m_match];
    TranscriptTextView::scrollRangeToVisible(*shownText(), r.start, r.end - r.start);
    showFindMarks();
}

void ResultView::showFindMarks()
{
    QTextEdit *edit = shownText();
    QList<QTextEdit::ExtraSelection> marks;
    if (m_findBar->isVisible() && !m_matches.isEmpty()) {
        const QPalette &p = palette();
        QTextCharFormat all, current;
        all.setBackground(Style::withAlpha(Style::color(p, Style::Tone::yellow), 0.35));
        current.setBackground(Style::withAlpha(Style::color(p, Style::Tone::orange), 0.75));
        auto mark = [&](const Corrections::Range &r, const QTextCharFormat &format) {
            QTextEdit::ExtraSelection s;
            s.cursor = QTextCursor(edit->document());
            s.cursor.setPosition(int(r.start));
            s.cursor.setPosition(int(r.end), QTextCursor::KeepAnchor);
            s.format = format;
            marks << s;
        };
        // Every mark costs a little on each paint: a very common query marks the matches
        // around the current one, which is where the reader looks.
        const qsizetype around = std::max<qsizetype>(m_match, 0);
        const qsizetype from = std::max<qsizetype>(0, around - maxMarks / 2);
        for (qsizetype i = from; i < std::min(m_matches.size(), from + maxMarks); ++i)
            mark(m_matches[i], all);
        if (m_match >= 0)
            mark(m_matches[m_match], current);
    }
    if (edit == m_textView)
        m_textView->setFindMarks(marks);
    else
        m_levelText->setExtraSelections(marks);
    // The other surface keeps no marks of an earlier search.
    if (edit == m_textView)
        m_levelText->setExtraSelections({});
    else
        m_textView->setFindMarks({});
}

void ResultView::playFromMatch()
{
    if (m_match < 0 || shownText() != m_textView)
        return;
    const std::optional<TranscriptLayout::Seek> seek =
        TranscriptLayout::seekFor(m_textView->coordinator().anchors(), m_matches[m_match].start, 0);
    if (!seek)
        return;
    m_player->seek(double(seek->ms) / 1000.0);
    if (!m_player->isPlaying())
        m_player->togglePlay();
}

void ResultView::seekFromText(qint64 ms, bool exact)
{
    // A selection starts a second ahead of the selected place; a click exactly on it.
    const double t = double(ms) / 1000.0;
    m_player->seek(exact ? t : std::max(0.0, t - 1.0));
}

// --- Events ---

void ResultView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (const std::optional<QString> audio = TranscriptLines::audioURL(m_item))
        m_player->load(*audio);
    m_playerSlot->setVisible(TranscriptLines::audioURL(m_item).has_value());
}

void ResultView::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_player->pause();
}

void ResultView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
        showPicker();
        showChips();
        showActions();
    } else if (event->type() == QEvent::PaletteChange) {
        retranslate();
        showPicker();
        showChips();
    }
}

// --- Actions ---

void ResultView::copy()
{
    QClipboard *clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setText(currentText());
    setCopied(true);
    // A later press does not cancel this timer: it may end a later confirmation early.
    QTimer::singleShot(1500, this, [this] { setCopied(false); });
}

QString ResultView::savePath(const QString &defaultName, const QString &filter) const
{
    if (m_savePanel)
        return m_savePanel(defaultName, filter);
    QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (folder.isEmpty() || !QDir(folder).exists())
        folder = QDir::homePath();
    return QFileDialog::getSaveFileName(const_cast<ResultView *>(this), QString(), folder + u'/' + defaultName,
                                        filter);
}

void ResultView::exportText()
{
    const QString path = savePath(exportBase() + QStringLiteral(".txt"), QString());
    if (!path.isEmpty())
        writeText(path, currentText());
}

void ResultView::exportPDF()
{
    const QString path = savePath(exportBase() + QStringLiteral(".pdf"), QStringLiteral("PDF (*.pdf)"));
    if (!path.isEmpty())
        PDFExporter::write(m_item.fileName, currentText(), path);
}

void ResultView::exportDocx()
{
    const QString path = savePath(exportBase() + QStringLiteral(".docx"), QStringLiteral("Word (*.docx)"));
    if (!path.isEmpty())
        DocxExporter::write(m_item.fileName, currentText(), path);
}

void ResultView::exportSubtitles()
{
    // Subtitles come from the timed segments whatever view is on show; the speaker view's
    // carry the names.
    const QString path = savePath(FileNames::deletingPathExtension(m_item.fileName) + QStringLiteral(".srt"), QString());
    if (!path.isEmpty())
        writeText(path, AppModel::srt(m_item, m_selectedView == TranscriptLines::speakerView));
}

void ResultView::exportVtt()
{
    const QString path = savePath(FileNames::deletingPathExtension(m_item.fileName) + QStringLiteral(".vtt"),
                                  QStringLiteral("WebVTT (*.vtt)"));
    if (!path.isEmpty())
        writeText(path, AppModel::vtt(m_item));
}

void ResultView::exportJson()
{
    const QString path = savePath(FileNames::deletingPathExtension(m_item.fileName) + QStringLiteral(".json"),
                                  QStringLiteral("JSON (*.json)"));
    if (!path.isEmpty())
        writeText(path, QString::fromUtf8(AppModel::transcriptJson(m_item)));
}

namespace {

// One rename of speakers, and its way back.
class SpeakerNamesChange : public QUndoCommand {
public:
    SpeakerNamesChange(AppModel &app, QString itemId, QMap<QString, QString> before, QMap<QString, QString> after)
        : m_app(app), m_itemId(std::move(itemId)), m_before(std::move(before)), m_after(std::move(after))
    {
        setText(Tr::tr("Sprecher umbenennen"));
    }
    void undo() override { m_app.setSpeakerNames(m_itemId, m_before); }
    void redo() override { m_app.setSpeakerNames(m_itemId, m_after); }

private:
    AppModel &m_app;
    QString m_itemId;
    QMap<QString, QString> m_before, m_after;
};

} // namespace

void ResultView::askSpeakerName(const QString &shown)
{
    NameDialog::ask(this, Tr::tr("Sprecher umbenennen"), Tr::tr("Neuer Name für „%1“:").arg(shown), shown,
                    [this, shown, itemId = m_item.id](const QString &name) {
                        if (m_item.id == itemId)
                            renameSpeaker(shown, name);
                    });
}

void ResultView::renameSpeaker(const QString &shown, const QString &name)
{
    const QMap<QString, QString> before = m_item.speakerNames;
    m_app.renameSpeaker(m_item.id, shown, name);
    if (m_item.speakerNames != before)
        m_undo->push(new SpeakerNamesChange(m_app, m_item.id, before, m_item.speakerNames));
}

void ResultView::revealBundle()
{
    if (m_item.bundleURL)
        FileManager::reveal(*m_item.bundleURL);
}

void ResultView::openCorrectionSheet(const QString &from)
{
    if (from.isEmpty())
        return;
    auto *sheet = new CorrectionSheet(TranscriptLines::searchBase(m_item), from, this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    const QString itemId = m_item.id;
    connect(sheet, &CorrectionSheet::saved, this, [this, itemId](const Correction &c) {
        if (!c.from.isEmpty())
            m_app.addCorrection(itemId, c.from, c.to, c.caseSensitive, c.wholeWord);
    });
    sheet->open();
}

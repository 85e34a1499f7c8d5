#include "ui/DropZone.h"
#include "core/Tr.h"

#include "app/AppModel.h"
#include "app/ModelStore.h"
#include "app/TranscriptionQueue.h"
#include "ui/Icons.h"
#include "ui/Style.h"
#include "ui/Windows.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace {

constexpr int inset = 24; // of the dashed frame from the pane's edges

QPushButton *largeButton(QWidget *parent)
{
    auto *button = new QPushButton(parent);
    button->setIconSize(QSize(18, 18));
    button->setMinimumHeight(34);
    button->setFont(Style::font(Style::TextSize::body));
    return button;
}

} // namespace

QPushButton *makeModelHint(AppModel &app, QWidget *parent)
{
    auto *hint = new QPushButton(parent);
    hint->setFlat(true);
    hint->setCursor(Qt::PointingHandCursor);
    hint->setFont(Style::font(Style::TextSize::callout));
    QObject::connect(hint, &QPushButton::clicked, &app, [&app] { app.setShowSettings(true); });
    retranslateModelHint(hint);
    restyleModelHint(hint);
    return hint;
}

void retranslateModelHint(QPushButton *hint)
{
    hint->setText(Tr::tr("Lade zuerst ein Modell in den Einstellungen."));
}

void restyleModelHint(QPushButton *hint)
{
    const QColor orange = Style::color(QApplication::palette(), Style::Tone::orange);
    Style::setTextColor(hint, orange);
    hint->setIcon(Icons::icon(QStringLiteral("exclamationmark.circle"), orange));
}

void openDropped(AppModel &app, QDropEvent *event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.isEmpty())
        return;
    // Files are taken whatever their type; one that cannot be read fails in its job.
    event->acceptProposedAction();
    QStringList paths;
    for (const QUrl &url : urls) {
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    }
    if (paths.isEmpty())
        return;
    QMetaObject::invokeMethod(&app, [app = &app, paths] { app->queue().open(paths); }, Qt::QueuedConnection);
}

DropZone::DropZone(AppModel &app, QWidget *parent) : QWidget(parent), m_app(app)
{
    setAcceptDrops(true);

    auto *layout = new QVBoxLayout(this);
    // 40 points of padding inside a frame that is inset by 24.
    layout->setContentsMargins(inset + 40, inset + 40, inset + 40, inset + 40);
    layout->setSpacing(16);
    layout->addStretch(1);

    m_icon = new QLabel(this);
    m_icon->setAlignment(Qt::AlignCenter);
    layout->addWidget(m_icon);

    m_heading = new QLabel(this);
    m_heading->setFont(Style::font(Style::TextSize::title3, QFont::Medium));
    m_heading->setAlignment(Qt::AlignCenter);
    m_heading->setWordWrap(true);
    layout->addWidget(m_heading);

    m_text = new QLabel(this);
    m_text->setFont(Style::font(Style::TextSize::callout));
    m_text->setAlignment(Qt::AlignCenter);
    m_text->setWordWrap(true);
    layout->addWidget(m_text);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(10);
    buttons->addStretch(1);
    m_open = largeButton(this);
    connect(m_open, &QPushButton::clicked, &app, &AppModel::openPanel);
    buttons->addWidget(m_open);
    m_record = largeButton(this);
    connect(m_record, &QPushButton::clicked, &app, &AppModel::stageRecording);
    buttons->addWidget(m_record);
    m_interview = largeButton(this);
    connect(m_interview, &QPushButton::clicked, &app, &AppModel::stageInterview);
    buttons->addWidget(m_interview);
    buttons->addStretch(1);
    layout->addSpacing(2);
    layout->addLayout(buttons);

    // The row sets its own width: wide enough for its hint in every language.
    if (QWidget *link = makeLinkField(app, this))
        layout->addWidget(link, 0, Qt::AlignHCenter);

    m_hint = makeModelHint(app, this);
    layout->addWidget(m_hint, 0, Qt::AlignHCenter);
    layout->addStretch(1);

    connect(app.modelStore(), &ModelStore::installedChanged, this, &DropZone::updateHint);

    retranslate();
    restyle();
    updateHint();
}

void DropZone::updateHint()
{
    m_hint->setVisible(m_app.modelStore()->installed().isEmpty());
}

void DropZone::retranslate()
{
    m_heading->setText(Tr::tr("Audio- oder Videodatei hierher ziehen"));
    m_text->setText(Tr::tr("Bei Videos wird die Tonspur transkribiert. Alles bleibt lokal auf diesem Mac."));
    m_open->setText(Tr::tr("Datei öffnen…"));
    m_record->setText(Tr::tr("Aufnehmen"));
    m_interview->setText(Tr::tr("Interview"));
    retranslateModelHint(m_hint);
}

void DropZone::restyle()
{
    const QPalette &pal = QApplication::palette();
    const QColor iconColor = Style::color(pal, m_targeted ? Style::Tone::accent : Style::Tone::secondary);
    m_icon->setPixmap(Icons::pixmap(QStringLiteral("waveform"), 52, iconColor, devicePixelRatioF()));
    Style::setTextColor(m_text, Style::color(pal, Style::Tone::secondary));
    m_open->setIcon(Icons::icon(QStringLiteral("folder"), pal));
    m_record->setIcon(Icons::icon(QStringLiteral("mic"), pal));
    m_interview->setIcon(Icons::icon(QStringLiteral("person.2.wave.2"), pal));
    restyleModelHint(m_hint);
}

void DropZone::setTargeted(bool targeted)
{
    if (m_targeted == targeted)
        return;
    m_targeted = targeted;
    restyle();
    update();
}

void DropZone::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette &pal = QApplication::palette();
    const QColor color = m_targeted ? Style::color(pal, Style::Tone::accent)
                                    : Style::withAlpha(Style::color(pal, Style::Tone::secondary), 0.4);
    QPen pen(color, 2);
    // Dashes of 10 points: the pattern counts in line widths.
    pen.setDashPattern({5, 5});
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset + 1, inset + 1, -inset - 1, -inset - 1), 16, 16);
}

void DropZone::dragEnterEvent(QDragEnterEvent *event)
{
    if (!event->mimeData()->hasUrls())
        return;
    event->acceptProposedAction();
    setTargeted(true);
}

void DropZone::dragLeaveEvent(QDragLeaveEvent *event)
{
    setTargeted(false);
    QWidget::dragLeaveEvent(event);
}

void DropZone::dropEvent(QDropEvent *event)
{
    setTargeted(false);
    openDropped(m_app, event);
}

void DropZone::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    else if (event->type() == QEvent::ApplicationPaletteChange)
        restyle();
    QWidget::changeEvent(event);
}

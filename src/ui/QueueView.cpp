#include "ui/QueueView.h"
#include "core/Tr.h"

#include "app/AppModel.h"
#include "app/TranscriptionQueue.h"
#include "ui/DropZone.h"
#include "ui/ElidedLabel.h"
#include "ui/Icons.h"
#include "ui/Style.h"
#include "ui/TranscribeSetupView.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

using State = TranscriptionQueue::State;

QString stateText(const TranscriptionQueue::Row &row)
{
    switch (row.state) {
    case State::Waiting: return Tr::tr("Wartet");
    case State::Running:
        return row.speakers ? Tr::tr("Sprecher werden erkannt…") : Tr::tr("Läuft · %1 %").arg(int(row.progress * 100));
    case State::Done: return row.known ? Tr::tr("Schon im Verlauf") : Tr::tr("Fertig");
    case State::Failed: return Tr::tr("Fehlgeschlagen");
    case State::Cancelled: return Tr::tr("Abgebrochen");
    }
    return {};
}

} // namespace

QueueRow::QueueRow(AppModel &app, const TranscriptionQueue::Row &row, QWidget *parent)
    : QWidget(parent), m_app(app), m_row(row)
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 10, 0, 10);
    layout->setSpacing(10);
    m_icon = new QLabel(this);
    m_icon->setFixedSize(18, 18);
    layout->addWidget(m_icon, 0, Qt::AlignTop);

    auto *texts = new QVBoxLayout;
    texts->setSpacing(3);
    m_name = new ElidedLabel(this);
    m_name->setFont(Style::font(Style::TextSize::body));
    texts->addWidget(m_name);
    auto *line = new QHBoxLayout;
    line->setSpacing(8);
    m_state = new QLabel(this);
    m_state->setFont(Style::withTabularDigits(Style::font(Style::TextSize::caption)));
    line->addWidget(m_state);
    m_progress = new QProgressBar(this);
    m_progress->setRange(0, 1000);
    m_progress->setTextVisible(false);
    m_progress->setFixedSize(160, 6);
    line->addWidget(m_progress);
    line->addStretch(1);
    texts->addLayout(line);
    m_reason = new QLabel(this);
    m_reason->setFont(Style::font(Style::TextSize::caption));
    m_reason->setWordWrap(true);
    m_reason->setTextInteractionFlags(Qt::TextSelectableByMouse);
    texts->addWidget(m_reason);
    layout->addLayout(texts, 1);

    m_open = new QPushButton(this);
    connect(m_open, &QPushButton::clicked, this, [this] {
        for (const HistoryItem &item : m_app.history()) {
            if (item.bundlePath == m_row.bundle)
                return m_app.setCurrent(item);
        }
    });
    layout->addWidget(m_open, 0, Qt::AlignVCenter);
    m_cancel = new QToolButton(this);
    m_cancel->setAutoRaise(true);
    m_cancel->setIconSize(QSize(18, 18));
    m_cancel->setFocusPolicy(Qt::StrongFocus);
    connect(m_cancel, &QToolButton::clicked, this, [this] { m_app.queue().cancel(m_row.id); });
    layout->addWidget(m_cancel, 0, Qt::AlignVCenter);

    draw();
}

void QueueRow::setRow(const TranscriptionQueue::Row &row)
{
    if (row == m_row)
        return;
    m_row = row;
    draw();
}

void QueueRow::draw()
{
    const TranscriptionQueue::Row &row = m_row;
    const QPalette &pal = QApplication::palette();
    const bool live = row.state == State::Waiting || row.state == State::Running;
    m_name->setText(row.name);
    m_name->setToolTip(row.path);
    m_state->setText(stateText(row));
    m_progress->setVisible(row.state == State::Running && !row.speakers);
    m_progress->setValue(int(row.progress * 1000));
    m_reason->setText(row.reason);
    m_reason->setVisible(row.state == State::Failed && !row.reason.isEmpty());
    m_cancel->setVisible(live);
    m_open->setVisible(row.state == State::Done && !row.bundle.isEmpty());

    const auto [symbol, tone] = [&]() -> std::pair<QString, Style::Tone> {
        switch (row.state) {
        case State::Waiting: return {QStringLiteral("doc.text"), Style::Tone::secondary};
        case State::Running: return {QStringLiteral("play.circle"), Style::Tone::accent};
        case State::Done: return {QStringLiteral("checkmark"), Style::Tone::green};
        case State::Failed: return {QStringLiteral("exclamationmark.circle"), Style::Tone::orange};
        case State::Cancelled: return {QStringLiteral("xmark.circle"), Style::Tone::secondary};
        }
        return {};
    }();
    m_icon->setPixmap(Icons::pixmap(symbol, 18, Style::color(pal, tone), devicePixelRatioF()));
    Style::setTextColor(m_state, Style::color(pal, row.state == State::Failed ? Style::Tone::orange
                                                                                : Style::Tone::secondary));
    Style::setTextColor(m_reason, Style::color(pal, Style::Tone::text));
    m_cancel->setIcon(Icons::icon(QStringLiteral("xmark.circle"), pal));
    m_cancel->setToolTip(Tr::tr("Abbrechen"));
    m_cancel->setAccessibleName(Tr::tr("„%1“ abbrechen").arg(row.name));
    m_open->setText(Tr::tr("Öffnen"));
    m_open->setAccessibleName(Tr::tr("„%1“ öffnen").arg(row.name));
    m_progress->setAccessibleName(Tr::tr("Fortschritt von „%1“").arg(row.name));
    setAccessibleName(row.name + QStringLiteral(", ") + m_state->text());
}

void QueueRow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange || event->type() == QEvent::ApplicationPaletteChange)
        draw();
    QWidget::changeEvent(event);
}

QueueView::QueueView(AppModel &app, QWidget *parent) : QWidget(parent), m_app(app)
{
    setAcceptDrops(true);
    TranscriptionQueue *queue = &app.queue();

    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);

    m_setup = new TranscribeSetupView(
        app, 0, [queue] { queue->start(); }, [queue] { queue->clear(); }, this);
    outer->addWidget(m_setup);

    // Once started: a header like the setup's, with the count.
    m_header = new QWidget(this);
    // As wide as the column of rows below it, with its margins.
    m_header->setMaximumWidth(560 + 2 * 28);
    auto *headerRow = new QHBoxLayout(m_header);
    headerRow->setContentsMargins(28, 28, 28, 18);
    headerRow->setSpacing(12);
    m_icon = new QLabel(m_header);
    m_icon->setFixedSize(34, 34);
    headerRow->addWidget(m_icon, 0, Qt::AlignVCenter);
    auto *texts = new QVBoxLayout;
    texts->setSpacing(2);
    m_title = new QLabel(m_header);
    m_title->setFont(Style::font(Style::TextSize::title2, QFont::Bold));
    m_count = new QLabel(m_header);
    m_count->setFont(Style::withTabularDigits(Style::font(Style::TextSize::callout)));
    texts->addWidget(m_title);
    texts->addWidget(m_count);
    headerRow->addLayout(texts, 1);
    m_clear = new QPushButton(m_header);
    connect(m_clear, &QPushButton::clicked, queue, &TranscriptionQueue::clear);
    headerRow->addWidget(m_clear, 0, Qt::AlignVCenter);
    m_cancelAll = new QPushButton(m_header);
    connect(m_cancelAll, &QPushButton::clicked, queue, &TranscriptionQueue::cancelAll);
    headerRow->addWidget(m_cancelAll, 0, Qt::AlignVCenter);
    outer->addWidget(m_header);

    // The rows, in a column as wide as the setup's, scrolling when they are many.
    auto *scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->viewport()->setAutoFillBackground(false);
    auto *content = new QWidget(scroll);
    content->setAutoFillBackground(false);
    auto *contentLayout = new QHBoxLayout(content);
    contentLayout->setContentsMargins(28, 0, 28, 28);
    auto *column = new QVBoxLayout;
    // The quiet surface of the setup's options card.
    m_card = new Style::RoundedBox(0.08, 12, content);
    m_card->setMaximumWidth(560);
    m_card->setAccessibleName(Tr::tr("Warteschlange"));
    m_rowsLayout = new QVBoxLayout(m_card);
    m_rowsLayout->setContentsMargins(16, 4, 16, 4);
    m_rowsLayout->setSpacing(0);
    column->addWidget(m_card);
    column->addStretch(1);
    contentLayout->addLayout(column, 1);
    contentLayout->addStretch(0);
    scroll->setWidget(content);
    outer->addWidget(scroll, 1);

    connect(queue, &TranscriptionQueue::rowsChanged, this, &QueueView::refresh);
    retranslate();
    restyle();
    refresh();
}

TranscribeSetupView *QueueView::setup() const
{
    return m_setup->isHidden() ? nullptr : m_setup;
}

QList<QueueRow *> QueueView::rowWidgets() const
{
    QList<QueueRow *> list;
    for (int i = 0; i < m_rowsLayout->count(); ++i) {
        if (auto *row = qobject_cast<QueueRow *>(m_rowsLayout->itemAt(i)->widget()))
            list.append(row);
    }
    return list;
}

void QueueView::refresh()
{
    const TranscriptionQueue *queue = &m_app.queue();
    const TranscriptionQueue::Phase phase = queue->phase();
    const bool staged = phase == TranscriptionQueue::Phase::Staged;
    m_setup->setVisible(staged);
    m_header->setVisible(!staged);
    m_clear->setVisible(phase == TranscriptionQueue::Phase::Ended);
    m_cancelAll->setVisible(phase == TranscriptionQueue::Phase::Running);
    if (staged) {
        const auto waiting = std::count_if(queue->rows().cbegin(), queue->rows().cend(),
                                           [](const auto &r) { return r.state == State::Waiting; });
        m_setup->setFileCount(int(waiting));
    }
    retranslate();

    // The rows in the queue's order; a widget whose row is gone goes with it.
    QSet<int> ids;
    for (const TranscriptionQueue::Row &row : queue->rows())
        ids.insert(row.id);
    for (auto it = m_rows.begin(); it != m_rows.end();) {
        if (ids.contains(it.key())) {
            ++it;
            continue;
        }
        delete it.value();
        it = m_rows.erase(it);
    }
    int index = 0;
    for (const TranscriptionQueue::Row &row : queue->rows()) {
        QueueRow *widget = m_rows.value(row.id);
        if (!widget) {
            widget = new QueueRow(m_app, row, m_card);
            m_rows.insert(row.id, widget);
        }
        if (m_rowsLayout->indexOf(widget) != index) {
            m_rowsLayout->removeWidget(widget);
            m_rowsLayout->insertWidget(index, widget);
        }
        widget->setRow(row);
        ++index;
    }
}

void QueueView::retranslate()
{
    const TranscriptionQueue *queue = &m_app.queue();
    const bool running = queue->phase() == TranscriptionQueue::Phase::Running;
    m_title->setText(running ? Tr::tr("Dateien werden transkribiert") : Tr::tr("Warteschlange abgeschlossen"));
    const int total = int(queue->rows().size());
    QString count = Tr::tr("%1 von %n Dateien erledigt", nullptr, total).arg(queue->finishedCount());
    const auto failed = std::count_if(queue->rows().cbegin(), queue->rows().cend(),
                                      [](const auto &r) { return r.state == State::Failed; });
    if (failed > 0)
        count += QStringLiteral(" · ") + Tr::tr("%n fehlgeschlagen", nullptr, int(failed));
    m_count->setText(count);
    m_clear->setText(Tr::tr("Liste leeren"));
    m_cancelAll->setText(Tr::tr("Alle abbrechen"));
    m_card->setAccessibleName(Tr::tr("Warteschlange"));
}

void QueueView::restyle()
{
    const QPalette &pal = QApplication::palette();
    m_icon->setPixmap(Icons::pixmap(QStringLiteral("waveform.circle.fill"), 34, Style::color(pal, Style::Tone::accent),
                                    devicePixelRatioF()));
    Style::setTextColor(m_count, Style::color(pal, Style::Tone::secondary));
    m_clear->setIcon(Icons::icon(QStringLiteral("trash"), pal));
    m_cancelAll->setIcon(Icons::icon(QStringLiteral("xmark.circle"), pal));
}

void QueueView::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void QueueView::dropEvent(QDropEvent *event)
{
    openDropped(m_app, event);
}

void QueueView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    else if (event->type() == QEvent::ApplicationPaletteChange)
        restyle();
    QWidget::changeEvent(event);
}

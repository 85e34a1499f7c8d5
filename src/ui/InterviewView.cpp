#include "ui/InterviewView.h"

#include "app/AppModel.h"
#include "app/InterviewJob.h"
#include "core/Tr.h"
#include "export/TextForms.h"
#include "ui/Icons.h"
#include "ui/Spinner.h"
#include "ui/Style.h"

#include <QCheckBox>
#include <QEvent>
#include <QKeyEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTimer>

#include <cmath>

namespace {

// The red recording dot, dim while nothing is recorded.
class RecordingDot : public QWidget {
public:
    explicit RecordingDot(QWidget *parent) : QWidget(parent) { setFixedSize(10, 10); }
    void setLit(bool lit)
    {
        m_lit = lit;
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.setPen(Qt::NoPen);
        p.setBrush(Style::withAlpha(QColor(Qt::red), m_lit ? 1.0 : 0.3));
        p.drawEllipse(rect());
    }

private:
    bool m_lit = false;
};

QString timeText(qint64 ms)
{
    return TextForms::minuteStamp(std::max<qint64>(0, ms));
}

QLabel *caption(QWidget *parent)
{
    auto *label = new QLabel(parent);
    Style::style(label, Style::TextSize::caption, Style::Tone::secondary);
    return label;
}

} // namespace

InterviewView::InterviewView(AppModel &app, QWidget *parent)
    : QWidget(parent), m_app(app), m_session(&app.interview())
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(20, 16, 20, 16);
    column->setSpacing(10);

    auto *header = new QHBoxLayout;
    header->setSpacing(10);
    header->addStretch(1);
    m_dot = new RecordingDot(this);
    header->addWidget(m_dot);
    m_title = new QLabel(this);
    Style::style(m_title, Style::TextSize::headline);
    header->addWidget(m_title);
    m_time = new QLabel(this);
    m_time->setFont(Style::withTabularDigits(Style::font(Style::TextSize::body)));
    Style::setTone(m_time, Style::Tone::secondary);
    header->addWidget(m_time);
    m_speakerSwitch = new QCheckBox(this);
    connect(m_speakerSwitch, &QCheckBox::toggled, this, [this](bool on) {
        m_showSpeaker = on;
        showText();
    });
    header->addWidget(m_speakerSwitch);
    m_cancel = new QPushButton(this);
    connect(m_cancel, &QPushButton::clicked, this, &InterviewView::cancel);
    header->addWidget(m_cancel);
    m_stop = new QPushButton(this);
    m_stop->setDefault(true);
    m_stop->setAutoDefault(true);
    connect(m_stop, &QPushButton::clicked, this, &InterviewView::stop);
    header->addWidget(m_stop);
    header->addStretch(1);
    column->addLayout(header);

    m_notice = caption(this);
    m_notice->setAlignment(Qt::AlignCenter);
    m_notice->setWordWrap(true);
    column->addWidget(m_notice);
    column->addWidget(Style::divider(this));

    // The live text: the speaker text, the timed segments, or a word of waiting.
    m_text = new QStackedWidget(this);
    m_speakerText = new QLabel(this);
    m_speakerText->setWordWrap(true);
    m_speakerText->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_speakerText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *speakerScroll = new QScrollArea(this);
    speakerScroll->setWidgetResizable(true);
    speakerScroll->setFrameShape(QFrame::NoFrame);
    speakerScroll->setWidget(m_speakerText);
    m_text->addWidget(speakerScroll);

    m_scroll = new QScrollArea(this);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    auto *rows = new QWidget(m_scroll);
    m_rows = new QVBoxLayout(rows);
    m_rows->setSpacing(6);
    m_rows->setContentsMargins(0, 0, 0, 0);
    m_rows->addStretch(1);
    m_scroll->setWidget(rows);
    m_text->addWidget(m_scroll);
    // The range grows once the new rows are laid out, which is when they can be scrolled to.
    connect(m_scroll->verticalScrollBar(), &QScrollBar::rangeChanged, this, [this](int, int max) {
        if (std::exchange(m_followRows, false))
            m_scroll->verticalScrollBar()->setValue(max);
    });

    auto *waiting = new QWidget(this);
    auto *waitingColumn = new QVBoxLayout(waiting);
    waitingColumn->setContentsMargins(0, 40, 0, 0);
    m_waiting = new QLabel(waiting);
    Style::setTone(m_waiting, Style::Tone::secondary);
    waitingColumn->addWidget(m_waiting, 0, Qt::AlignHCenter);
    waitingColumn->addStretch(1);
    m_text->addWidget(waiting);
    column->addWidget(m_text, 1);

    m_statusRow = new QWidget(this);
    auto *status = new QHBoxLayout(m_statusRow);
    status->setContentsMargins(0, 0, 0, 0);
    status->setSpacing(8);
    status->addStretch(1);
    status->addWidget(new Spinner(12, m_statusRow));
    m_status = caption(m_statusRow);
    status->addWidget(m_status);
    status->addStretch(1);
    column->addWidget(m_statusRow);

    for (auto signal : {&InterviewJob::elapsedChanged, &InterviewJob::isRecordingChanged,
                        &InterviewJob::isFinalizingChanged, &InterviewJob::permissionDeniedChanged,
                        &InterviewJob::statusChanged, &InterviewJob::speakerTextChanged})
        connect(m_session, signal, this, &InterviewView::showState);
    connect(m_session, &InterviewJob::segmentsChanged, this, &InterviewView::showText);
    connect(m_session, &InterviewJob::speakerTextChanged, this, &InterviewView::showText);

    retranslate();
    showText();
}

InterviewView::~InterviewView()
{
    // A screen that goes away mid-recording leaves no recording behind.
    if (m_session->isRecording())
        m_session->cancel();
}

void InterviewView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_started)
        return;
    m_started = true;
    // Return stops the interview, wherever the focus was before.
    setFocusPolicy(Qt::StrongFocus);
    setFocus();
    // Started from the event loop, once the screen is up.
    QTimer::singleShot(0, this, [this] {
        m_app.startInterview();
    });
}

void InterviewView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        stop();
        return;
    }
    QWidget::keyPressEvent(event);
}

void InterviewView::stop()
{
    if (!m_session->isRecording() || m_session->isFinalizing())
        return;
    m_app.stopInterview();
}

void InterviewView::cancel()
{
    if (m_session->isFinalizing())
        return;
    m_app.cancelInterview();
}

void InterviewView::showState()
{
    const bool finalizing = m_session->isFinalizing();
    static_cast<RecordingDot *>(m_dot)->setLit(m_session->isRecording());
    m_time->setText(timeText(qint64(std::trunc(m_session->elapsed() * 1000.0))));
    // The switch comes with the first speaker text, turned on so that the labels show at
    // once, and then stays.
    if (m_session->speakerText() && m_speakerSwitch->isHidden()) {
        m_speakerSwitch->setVisible(true);
        m_speakerSwitch->setChecked(true);
    }
    m_cancel->setEnabled(!finalizing);
    m_stop->setEnabled(m_session->isRecording() && !finalizing);
    // A button takes "&" for its shortcut mark; this one is a plain ampersand.
    m_stop->setText(finalizing ? Tr::tr("Wird abgeschlossen…")
                               : Tr::tr("Stopp & Speichern").replace(u'&', QStringLiteral("&&")));
    if (m_session->permissionDenied()) {
        m_notice->setText(Tr::tr("Kein Mikrofon-Zugriff. Bitte in Systemeinstellungen → Datenschutz → Mikrofon erlauben."));
        Style::setTone(m_notice, Style::Tone::orange);
    } else {
        m_notice->setText(
            Tr::tr("Transkribiert live mit; Sprecher-Labels erscheinen und aktualisieren sich während der Aufnahme."));
        Style::setTone(m_notice, Style::Tone::secondary);
    }
    m_statusRow->setVisible(finalizing);
    m_status->setText(m_session->status());
}

void InterviewView::showText()
{
    const QList<TranscriptSegment> &segments = m_session->segments();
    if (m_showSpeaker && m_session->speakerText()) {
        m_speakerText->setText(*m_session->speakerText());
        m_text->setCurrentIndex(0);
        return;
    }
    if (segments.isEmpty()) {
        m_text->setCurrentIndex(2);
        return;
    }
    m_text->setCurrentIndex(1);
    // Segments only ever come at the end: new rows go in above the closing stretch.
    for (qsizetype i = m_rowsShown; i < segments.size(); ++i) {
        auto *row = new QWidget(m_scroll->widget());
        auto *line = new QHBoxLayout(row);
        line->setContentsMargins(0, 0, 0, 0);
        line->setSpacing(10);
        QLabel *time = caption(row);
        time->setFont(Style::withTabularDigits(time->font()));
        time->setFixedWidth(44);
        time->setAlignment(Qt::AlignRight | Qt::AlignTop);
        time->setText(timeText(segments[i].startMs));
        auto *text = new QLabel(segments[i].text, row);
        text->setWordWrap(true);
        text->setTextInteractionFlags(Qt::TextSelectableByMouse);
        text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        line->addWidget(time, 0, Qt::AlignTop);
        line->addWidget(text, 1);
        m_rows->insertWidget(m_rows->count() - 1, row);
    }
    if (segments.size() != m_rowsShown) {
        m_rowsShown = segments.size();
        // New text comes into view; the user's own scrolling lasts until the next segment.
        m_followRows = true;
        QTimer::singleShot(0, this, [this] {
            m_scroll->verticalScrollBar()->setValue(m_scroll->verticalScrollBar()->maximum());
        });
    }
}

void InterviewView::retranslate()
{
    m_title->setText(Tr::tr("Interview-Modus"));
    m_speakerSwitch->setText(Tr::tr("Sprecher"));
    m_speakerSwitch->setVisible(m_session->speakerText().has_value());
    m_cancel->setText(Tr::tr("Abbrechen"));
    m_stop->setIcon(Icons::icon(QStringLiteral("stop.circle.fill"), palette()));
    m_waiting->setText(Tr::tr("Warte auf die ersten Wörter…"));
    showState();
}

void InterviewView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange || event->type() == QEvent::PaletteChange)
        retranslate();
}

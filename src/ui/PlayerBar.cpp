#include "ui/PlayerBar.h"
#include "core/Tr.h"

#include "export/TextForms.h"
#include "review/AudioPlayer.h"
#include "ui/Icons.h"
#include "ui/Style.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>

#include <cmath>

namespace {

// The slider counts milliseconds.
int sliderValue(double seconds)
{
    return int(std::clamp(std::llround(seconds * 1000.0), 0LL, qint64(std::numeric_limits<int>::max())));
}

QLabel *timeLabel(QWidget *parent, Qt::Alignment alignment)
{
    auto *label = new QLabel(parent);
    label->setFont(Style::withTabularDigits(Style::font(Style::TextSize::caption2)));
    label->setForegroundRole(QPalette::PlaceholderText);
    label->setMinimumWidth(40);
    label->setAlignment(alignment | Qt::AlignVCenter);
    return label;
}

} // namespace

PlayerBar::PlayerBar(AudioPlayer &player, QWidget *parent) : QWidget(parent), m_player(player)
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);

    m_play = new QToolButton(this);
    m_play->setAutoRaise(true);
    m_play->setIconSize(QSize(28, 28));
    m_play->setStyleSheet(QStringLiteral("QToolButton { border: none; padding: 0; }"));
    m_position = timeLabel(this, Qt::AlignRight);
    m_slider = new QSlider(Qt::Horizontal, this);
    m_slider->setRange(0, 100);
    m_length = timeLabel(this, Qt::AlignLeft);
    row->addWidget(m_play);
    row->addWidget(m_position);
    row->addWidget(m_slider, 1);
    row->addWidget(m_length);

    connect(m_play, &QToolButton::clicked, &m_player, &AudioPlayer::togglePlay);
    // Only the user's changes reach here; the bar's own updates are blocked.
    connect(m_slider, &QSlider::valueChanged, this, [this](int ms) { m_player.seek(ms / 1000.0); });
    connect(&m_player, &AudioPlayer::currentTimeChanged, this, &PlayerBar::showState);
    connect(&m_player, &AudioPlayer::durationChanged, this, &PlayerBar::showState);
    connect(&m_player, &AudioPlayer::isPlayingChanged, this, &PlayerBar::showState);
    showState();
}

QString PlayerBar::timeText(double seconds)
{
    const double ms = std::trunc(seconds * 1000.0);
    return TextForms::minuteStamp(std::isfinite(ms) ? qint64(ms) : 0);
}

void PlayerBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::LanguageChange)
        showState();
}

void PlayerBar::showState()
{
    const QColor accent = Style::color(palette(), Style::Tone::accent);
    if (m_player.isPlaying()) {
        m_play->setIcon(Icons::pauseCircle(accent));
        m_play->setToolTip(Tr::tr("Pause"));
    } else {
        m_play->setIcon(Icons::playCircle(accent));
        m_play->setToolTip(Tr::tr("Abspielen"));
    }
    m_position->setText(timeText(m_player.currentTime()));
    m_length->setText(timeText(m_player.duration()));
    const QSignalBlocker quiet(m_slider);
    m_slider->setRange(0, sliderValue(std::max(m_player.duration(), 0.1)));
    m_slider->setValue(sliderValue(m_player.currentTime()));
}

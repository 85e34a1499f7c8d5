#include "review/AudioPlayer.h"

#include <QAudioOutput>
#include <QMediaPlayer>
#include <QUrl>

#include <algorithm>
#include <cmath>

AudioPlayer::AudioPlayer(QObject *parent) : QObject(parent)
{
    m_timer.setInterval(30);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &AudioPlayer::tick);
}

AudioPlayer::~AudioPlayer()
{
    // Quietly: nobody is to hear from an object that is going.
    m_timer.stop();
    if (m_player) {
        m_player->disconnect(this);
        m_player->stop();
    }
}

void AudioPlayer::load(const QString &path)
{
    if (m_loadedPath == path)
        return;
    teardown();
    m_loadedPath = path;
    m_output = std::make_unique<QAudioOutput>();
    m_player = std::make_unique<QMediaPlayer>();
    m_player->setAudioOutput(m_output.get());

    // At the end the player stands ready at the start again.
    connect(m_player.get(), &QMediaPlayer::mediaStatusChanged, this, [this](QMediaPlayer::MediaStatus status) {
        if (status != QMediaPlayer::EndOfMedia)
            return;
        setPlaying(false);
        seek(0);
    });
    // The length comes when the media player has read it; a failed or odd one stays 0.
    connect(m_player.get(), &QMediaPlayer::durationChanged, this, [this](qint64 ms) {
        const double seconds = double(ms) / 1000.0;
        if (std::isfinite(seconds) && seconds > 0)
            setDuration(seconds);
    });
    connect(m_player.get(), &QMediaPlayer::positionChanged, this, &AudioPlayer::setAnchor);
    m_player->setSource(QUrl::fromLocalFile(path));
    m_timer.start();
}

void AudioPlayer::teardown()
{
    m_timer.stop();
    if (m_player) {
        m_player->disconnect(this);
        m_player->stop();
        m_player.reset();
    }
    m_output.reset();
    setPlaying(false);
    setCurrentTime(0);
    setDuration(0);
    m_loadedPath.reset();
}

void AudioPlayer::setAnchor(qint64 ms)
{
    m_anchorMs = ms;
    m_anchorClock.start();
}

void AudioPlayer::tick()
{
    // Only a running player moves the position; while paused it stands where the last
    // seek put it, even before the media player has caught up with that seek.
    if (!m_player || !m_isPlaying || m_player->playbackState() != QMediaPlayer::PlayingState)
        return;
    // Run on from the last report by at most a little more than one report's interval,
    // so that a stalled player does not run away from its sound.
    qint64 ms = m_anchorMs + std::min<qint64>(m_anchorClock.elapsed(), 60);
    if (m_duration > 0)
        ms = std::min(ms, std::llround(m_duration * 1000.0));
    // A report slightly behind what was published already does not move the cursor back.
    const qint64 published = std::llround(m_currentTime * 1000.0);
    if (ms < published && published - ms < 100)
        return;
    setCurrentTime(double(ms) / 1000.0);
}

void AudioPlayer::togglePlay()
{
    if (!m_player)
        return;
    if (m_isPlaying) {
        m_player->pause();
        setPlaying(false);
        return;
    }
    if (m_duration > 0 && m_currentTime >= m_duration - 0.05)
        seek(0);
    setAnchor(std::llround(m_currentTime * 1000.0));
    m_player->play();
    setPlaying(true);
}

void AudioPlayer::pause()
{
    if (m_player)
        m_player->pause();
    setPlaying(false);
}

void AudioPlayer::seek(double seconds)
{
    if (!m_player)
        return;
    double t = seconds;
    if (m_duration > 0)
        t = std::min(t, m_duration);
    t = std::max(t, 0.0);
    m_player->setPosition(std::llround(t * 1000.0));
    setAnchor(std::llround(t * 1000.0));
    setCurrentTime(t);
}

void AudioPlayer::setCurrentTime(double seconds)
{
    if (m_currentTime == seconds)
        return;
    m_currentTime = seconds;
    emit currentTimeChanged();
}

void AudioPlayer::setDuration(double seconds)
{
    if (m_duration == seconds)
        return;
    m_duration = seconds;
    emit durationChanged();
}

void AudioPlayer::setPlaying(bool playing)
{
    if (m_isPlaying == playing)
        return;
    m_isPlaying = playing;
    emit isPlayingChanged();
}

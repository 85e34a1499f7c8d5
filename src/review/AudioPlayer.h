#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>
#include <optional>

class QAudioOutput;
class QMediaPlayer;

// Plays the audio of one transcription and publishes its position every 30 ms while
// it plays, which is what drives the word cursor. One local file, no playlist. Main
// thread only.
class AudioPlayer : public QObject {
    Q_OBJECT
    Q_PROPERTY(double currentTime READ currentTime NOTIFY currentTimeChanged)
    Q_PROPERTY(double duration READ duration NOTIFY durationChanged)
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY isPlayingChanged)

public:
    explicit AudioPlayer(QObject *parent = nullptr);
    ~AudioPlayer() override;

    double currentTime() const { return m_currentTime; }
    double duration() const { return m_duration; } // 0 until known
    // The user's intent as last set here, not polled from the media player.
    bool isPlaying() const { return m_isPlaying; }
    const std::optional<QString> &loadedPath() const { return m_loadedPath; }

    // Loads a file, paused at 0; the same file again changes nothing. The length
    // arrives later; a file that cannot be played leaves it at 0.
    void load(const QString &path);
    // From within 0.05 s of the end, playing starts from 0.
    void togglePlay();
    // Clamped to 0 and, once known, to the length; exact, and published at once.
    void seek(double seconds);
    // Pauses and sets the playing flag to false, as when the screen goes away.
    void pause();

signals:
    void currentTimeChanged();
    void durationChanged();
    void isPlayingChanged();

private:
    void teardown();
    void tick();
    void setAnchor(qint64 ms);
    void setCurrentTime(double seconds);
    void setDuration(double seconds);
    void setPlaying(bool playing);

    std::unique_ptr<QMediaPlayer> m_player;
    std::unique_ptr<QAudioOutput> m_output;
    QTimer m_timer;
    std::optional<QString> m_loadedPath;
    // The media player reports its position only every 50 ms; between reports the
    // position runs on from the last one by the clock.
    qint64 m_anchorMs = 0;
    QElapsedTimer m_anchorClock;
    double m_currentTime = 0;
    double m_duration = 0;
    bool m_isPlaying = false;
};

#include "app/RecordingJob.h"

#include "capture/Recorder.h"

RecordingJob::RecordingJob(QObject *parent) : QObject(parent), m_recorder(std::make_unique<Recorder>())
{
    connect(m_recorder.get(), &Recorder::isRecordingChanged, this, &RecordingJob::isRecordingChanged);
    connect(m_recorder.get(), &Recorder::elapsedChanged, this, &RecordingJob::elapsedChanged);
    connect(m_recorder.get(), &Recorder::levelChanged, this, &RecordingJob::levelChanged);
    connect(m_recorder.get(), &Recorder::permissionDeniedChanged, this, &RecordingJob::permissionDeniedChanged);
}

RecordingJob::~RecordingJob() = default;

bool RecordingJob::isRecording() const
{
    return m_recorder->isRecording();
}

double RecordingJob::elapsed() const
{
    return m_recorder->elapsed();
}

float RecordingJob::level() const
{
    return m_recorder->level();
}

bool RecordingJob::permissionDenied() const
{
    return m_recorder->permissionDenied();
}

const std::optional<QString> &RecordingJob::filePath() const
{
    return m_recorder->fileURL();
}

void RecordingJob::start()
{
    m_recorder->start();
}

QFuture<std::optional<QString>> RecordingJob::stop()
{
    return m_recorder->stop();
}

void RecordingJob::cancel()
{
    m_recorder->cancel();
}

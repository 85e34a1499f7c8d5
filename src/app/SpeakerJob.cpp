#include "app/SpeakerJob.h"

#include "core/AIModel.h"
#include "ai/Smoother.h"
#include "app/PatchQueue.h"
#include "core/HistoryItem.h"
#include "core/Tr.h"
#include "core/UserError.h"
#include "engine/Engine.h"
#include "speakers/DiarizationModels.h"
#include "speakers/Diarizer.h"
#include "speakers/DiarizerError.h"
#include "storage/BundleStore.h"

#include <QFile>
#include <QPointer>
#include <QUnhandledException>
#include <QScopeGuard>
#include <QSet>
#include <QtConcurrent/QtConcurrentRun>

namespace {

// The separated voices and the segments they are laid over.
struct Voices {
    QList<SpeakerSpan> spans;
    QList<TranscriptSegment> segments;
};

void throwIfCancelled(const TranscribeControlPtr &control)
{
    if (control->isCancelled())
        throw DiarizerError::cancelled();
}

} // namespace

SpeakerJob::SpeakerJob(QObject *parent) : QObject(parent) {}

SpeakerJob::~SpeakerJob()
{
    if (m_control)
        m_control->cancel();
    for (QFuture<void> &work : m_pool) {
        try {
            work.waitForFinished();
        } catch (...) {
            // Its failure has nobody left to tell.
        }
    }
}

QFuture<SpeakerJob::Result> SpeakerJob::start(const HistoryItem &item, int speakerCount, const QString &key,
                                              const QString &modelId)
{
    if (item.speakerBusy)
        return QtFuture::makeExceptionalFuture<Result>(std::make_exception_ptr(Cancelled()));
    if (item.audioURL && QFile::exists(*item.audioURL))
        return acoustic(item, *item.audioURL, speakerCount, key, modelId);
    return textOnly(item, key, modelId);
}

// `item` may lie in the history, which the busy flag below rewrites: everything needed
// later is copied first, the audio path as the argument itself.
QFuture<SpeakerJob::Result> SpeakerJob::acoustic(const HistoryItem &item, QString audio, int speakerCount,
                                                 const QString &key, const QString &modelId)
{
    const bool hasKey = !key.isEmpty();
    const TranscribeControlPtr control = std::make_shared<TranscribeControl>();
    m_control = control;
    const QString id = item.id;
    const std::optional<QString> bundle = item.bundleURL;
    // A listed item that was never opened has its segments still on disk.
    const std::optional<QList<TranscriptSegment>> segments
        = item.segmentsPending ? std::nullopt : std::optional(item.result.segments);
    emit began(id);
    m_status = Tr::tr("Sprecher werden erkannt…");
    m_notice = ItemText();

    QPointer<SpeakerJob> self(this);
    auto status = [self, control](const QString &text) {
        if (self)
            self->postStatus(control, text);
    };
    auto progress = [status](double fraction) {
        status(Tr::tr("Stimmen trennen… %1 %").arg(int(fraction * 100)));
    };

    return DiarizationModels::ensure(status, control)
        .then(this,
              [this, control, audio, speakerCount, progress, segments,
               bundle](const DiarizationModels::Paths &models) {
                  throwIfCancelled(control);
                  m_status = Tr::tr("Bereite Audio auf…");
                  QFuture<Voices> work = QtConcurrent::run([=] {
                      const QString wav = Engine::extractWav(audio, control);
                      // From here on every way out removes the WAV file.
                      const auto removeWav = qScopeGuard([&] { QFile::remove(wav); });
                      throwIfCancelled(control);
                      QList<SpeakerSpan> spans = Diarizer::diarize(wav, models.seg, models.emb, Diarizer::defaultThreshold,
                                                                   speakerCount, control, progress);
                      throwIfCancelled(control);
                      if (segments)
                          return Voices{spans, *segments};
                      PatchQueue::drain();
                      const std::optional<LoadedBundle> whole = bundle ? BundleStore::load(*bundle) : std::nullopt;
                      return Voices{spans, whole ? BundleStore::historyItem(*whole).result.segments
                                                 : QList<TranscriptSegment>()};
                  });
                  m_pool.removeIf([](const QFuture<void> &f) { return f.isFinished(); });
                  m_pool.append(QFuture<void>(work));
                  return work;
              })
        .unwrap()
        .then(this,
              [this, control, hasKey, key, modelId](const Voices &voices) {
                  const QList<SpeakerSpan> &spans = voices.spans;
                  const QString labelled = Diarizer::speakerLabeledText(voices.segments, spans);
                  // Counted over the spans, so the naming step may see a text without labels.
                  QSet<int> speakers;
                  for (const SpeakerSpan &s : spans)
                      speakers.insert(s.speaker);
                  if (!hasKey || speakers.size() < 2)
                      return QtFuture::makeReadyValueFuture(Result{spans, labelled});
                  m_status = Tr::tr("KI ergänzt Namen und Rollen…");
                  return Smoother::refineSpeakers(labelled, key, AIModel::by(modelId), control)
                      .then([spans](const QString &named) { return Result{spans, named}; });
              })
        .unwrap()
        .then(this,
              [this, control, id, bundle, speakerCount](const Result &result) {
                  // A cancel that came after the answer still drops it.
                  throwIfCancelled(control);
                  QFuture<void> stored = finish(control, id, result.text, bundle);
                  // Else the speaker view looks like the original and nobody knows why.
                  QSet<int> speakers;
                  for (const SpeakerSpan &s : result.spans)
                      speakers.insert(s.speaker);
                  if (speakerCount < 1 && speakers.size() < 2)
                      m_notice = ItemText{id, Tr::tr("Nur eine Stimme erkannt. Sind es mehr, wähle ihre "
                                                     "Anzahl und erkenne neu.")};
                  return stored.then([result] { return result; });
              })
        .unwrap()
        .onFailed(this, [this, control, id]() -> Result {
            fail(control, id, std::current_exception());
            throw;
        });
}

QFuture<SpeakerJob::Result> SpeakerJob::textOnly(const HistoryItem &item, const QString &key, const QString &modelId)
{
    if (key.isEmpty()) {
        emit keyMissing(Tr::tr("Kein API-Key für den gewählten Anbieter hinterlegt. Bitte in den "
                               "Einstellungen eintragen."));
        return QtFuture::makeExceptionalFuture<Result>(std::make_exception_ptr(Cancelled()));
    }
    if (item.result.fullText.isEmpty())
        return QtFuture::makeExceptionalFuture<Result>(std::make_exception_ptr(Cancelled()));
    // A control here too, so that a cancel drops the answer when it comes.
    const TranscribeControlPtr control = std::make_shared<TranscribeControl>();
    m_control = control;
    const QString id = item.id;
    const std::optional<QString> bundle = item.bundleURL;
    // Copied before the busy flag rewrites the history, where `item` may lie.
    const QString fullText = item.result.fullText;
    emit began(id);
    m_status = Tr::tr("Sprecher werden erkannt…");
    return Smoother::detectSpeakers(fullText, key, AIModel::by(modelId), control)
        .then(this,
              [this, control, id, bundle](const QString &text) {
                  throwIfCancelled(control);
                  return finish(control, id, text, bundle).then([text] { return Result{{}, text}; });
              })
        .unwrap()
        .onFailed(this, [this, control, id]() -> Result {
            fail(control, id, std::current_exception());
            throw;
        });
}

void SpeakerJob::postStatus(const TranscribeControlPtr &job, const QString &text)
{
    QPointer<SpeakerJob> self(this);
    QMetaObject::invokeMethod(
        this,
        [self, job, text] {
            if (self && self->m_control == job)
                self->m_status = text;
        },
        Qt::QueuedConnection);
}

QFuture<void> SpeakerJob::finish(const TranscribeControlPtr &, const QString &id, const QString &text,
                                 const std::optional<QString> &bundle)
{
    emit finished(id, text);
    // The end of either of two jobs clears the shared fields.
    m_status = std::nullopt;
    m_control.reset();
    if (!bundle)
        return QtFuture::makeReadyVoidFuture();
    return PatchQueue::add([bundle = *bundle, text] { BundleStore::saveSpeakerText(bundle, text); });
}

void SpeakerJob::fail(const TranscribeControlPtr &, const QString &id, std::exception_ptr error)
{
    m_status = std::nullopt;
    m_control.reset();
    QString message;
    QString details;
    bool retry = false;
    try {
        // The thread pool wraps what it does not know as its own exception type.
        try {
            std::rethrow_exception(error);
        } catch (const QUnhandledException &wrapped) {
            if (!wrapped.exception())
                throw;
            std::rethrow_exception(wrapped.exception());
        }
    } catch (const DiarizationModels::TransferFailed &e) {
        // The models could not be fetched, as when offline: the same job may work later.
        message = e.errorDescription();
        details = e.details();
        retry = true;
    } catch (const UserError &e) {
        // The user's own cancel, wherever it stopped the job, shows nothing.
        if (!e.isCancelled()) {
            message = e.errorDescription();
            details = e.details();
        }
    } catch (const std::exception &e) {
        message = QString::fromLocal8Bit(e.what());
    } catch (...) {
    }
    emit failed(id, message, details, retry);
}

void SpeakerJob::cancel()
{
    if (m_control)
        m_control->cancel();
}

#include "core/WhisperModel.h"

#include <QCoreApplication>

namespace {

WhisperModel entry(const char *id, const char *name, const char *fileName, int sizeMB, const char *note)
{
    const QString file = QString::fromUtf8(fileName);
    return {QString::fromUtf8(id), QString::fromUtf8(name), file, sizeMB,
            WhisperModel::fileURL(WhisperModel::repositoryBase(), file), QString::fromUtf8(note)};
}

} // namespace

const QList<WhisperModel> &WhisperModel::all()
{
    static const QList<WhisperModel> models{
        entry("base-q5_1", "Base", "ggml-base-q5_1.bin", 57, QT_TRANSLATE_NOOP("Sagwerk", "Schnell, für Deutsch grob.")),
        entry("small-q5_1", "Small", "ggml-small-q5_1.bin", 181, QT_TRANSLATE_NOOP("Sagwerk", "Guter Standard.")),
        entry("medium-q5_0", "Medium", "ggml-medium-q5_0.bin", 514, QT_TRANSLATE_NOOP("Sagwerk", "Deutlich genauer.")),
        entry("large-v3-turbo-q5_0", "Large v3 Turbo", "ggml-large-v3-turbo-q5_0.bin", 547,
              QT_TRANSLATE_NOOP("Sagwerk", "Beste Qualität, auf Apple Silicon flott.")),
    };
    return models;
}

std::optional<WhisperModel> WhisperModel::withId(const QString &id)
{
    for (const WhisperModel &model : all())
        if (model.id == id)
            return model;
    return std::nullopt;
}

QUrl WhisperModel::repositoryBase()
{
    return QUrl(QStringLiteral("https://huggingface.co/ggerganov/whisper.cpp/resolve/main/"));
}

QUrl WhisperModel::fileURL(const QUrl &base, const QString &name)
{
    return QUrl(base.toString() + name);
}

#include "core/WhisperModel.h"

#include <QCoreApplication>

namespace {

WhisperModel entry(const char *id, const char *name, const char *fileName, int sizeMB, const char *note,
                   const char *coreMLName, int coreMLSizeMB)
{
    const QUrl base = WhisperModel::repositoryBase();
    const QString file = QString::fromUtf8(fileName);
    const QString package = QString::fromUtf8(coreMLName);
    return {QString::fromUtf8(id),
            QString::fromUtf8(name),
            file,
            sizeMB,
            WhisperModel::fileURL(base, file),
            QString::fromUtf8(note),
            package,
            coreMLSizeMB,
            WhisperModel::fileURL(base, package + QStringLiteral(".zip"))};
}

} // namespace

// The package names lack the quantisation suffix: the speech library derives them
// from the model file's name by dropping ".bin" and that suffix.
const QList<WhisperModel> &WhisperModel::all()
{
    static const QList<WhisperModel> models{
        entry("base-q5_1", "Base", "ggml-base-q5_1.bin", 57, QT_TRANSLATE_NOOP("Sagwerk", "Schnell, für Deutsch grob."),
              "ggml-base-encoder.mlmodelc", 37),
        entry("small-q5_1", "Small", "ggml-small-q5_1.bin", 181, QT_TRANSLATE_NOOP("Sagwerk", "Guter Standard."),
              "ggml-small-encoder.mlmodelc", 163),
        entry("medium-q5_0", "Medium", "ggml-medium-q5_0.bin", 514, QT_TRANSLATE_NOOP("Sagwerk", "Deutlich genauer."),
              "ggml-medium-encoder.mlmodelc", 567),
        entry("large-v3-turbo-q5_0", "Large v3 Turbo", "ggml-large-v3-turbo-q5_0.bin", 547,
              QT_TRANSLATE_NOOP("Sagwerk", "Beste Qualität, auf Apple Silicon flott."),
              "ggml-large-v3-turbo-encoder.mlmodelc", 1173),
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

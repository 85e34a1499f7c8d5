#pragma once

#include "engine/GgmlFormat.h"
#include "core/TranscribeControl.h"
#include "core/WhisperModel.h"

#include <QIODevice>
#include <QString>

#include <exception>
#include <functional>
#include <optional>

// Why an import failed. `errorDescription` is the text the user sees.
class ModelImportError : public std::exception {
public:
    enum class Case { notAModel, broken, englishOnly, notInCatalogue, writeFailed, cancelled };

    ModelImportError(Case c, QString subject, QString detail = {})
        : m_case(c), m_subject(std::move(subject)), m_detail(std::move(detail)) {}

    Case kind() const { return m_case; }
    QString errorDescription() const;
    const char *what() const noexcept override;

private:
    Case m_case;
    QString m_subject; // the path or the model kind the text names
    QString m_detail;  // technical addition, for damaged files
    mutable QByteArray m_what;
};

// Turns a Whisper model on disk into the model file of its catalogue entry in the
// models folder: a whisper.cpp model file is checked and copied, a CTranslate2 model
// folder (as faster-whisper uses it) is converted. The target appears only when the
// new file is complete and loads; a failure or a cancel leaves the folder as it was.
namespace ModelImport {

struct Result {
    WhisperModel model; // the catalogue entry the import filled
    QString kind;       // what the source is, such as "base"
    QString path;       // the model file in the models folder
};

// Blocks for the whole import. Throws ModelImportError.
Result importModel(const QString &source, const QString &modelsDir, const TranscribeControlPtr &control = {},
                   const std::function<void(double)> &progress = {});

// --- Building blocks, public so that tests can reach them. ---

// What a model is by its shape: "base", "small.en", "large-v3-turbo"..., or a
// technical description when no released Whisper model has that shape.
QString kindOf(const GgmlFormat::Hparams &h);
bool isEnglishOnly(const GgmlFormat::Hparams &h);

// The catalogue entry a model of `kind` fills.
std::optional<WhisperModel> catalogueEntry(const QString &kind);

// The shape of the CTranslate2 model in `folder`. Throws ModelImportError.
GgmlFormat::Hparams ctranslate2Hparams(const QString &folder);

// The type of a catalogue model's matrices, as its id names it ("base-q5_1").
GgmlFormat::Type quantisation(const WhisperModel &model);

// Writes the CTranslate2 model of `folder` as a whisper.cpp model file to `out`, its
// matrices as `matrices`.
void convertCTranslate2(const QString &folder, QIODevice &out, GgmlFormat::Type matrices = GgmlFormat::Type::F16,
                        const TranscribeControlPtr &control = {}, const std::function<void(double)> &progress = {});

// Whether whisper.cpp loads the file as a model (on the CPU, quietly).
bool loads(const QString &path);

} // namespace ModelImport

#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

// Reads a CTranslate2 model folder as faster-whisper uses it: the variables of
// model.bin (also when it is split into model.bin.part1, .part2, ...) and the token
// list. Only the index is read up front; weights are read row by row on demand, so
// that a model of several hundred megabytes never sits in memory as a whole.
class CTranslate2Reader {
public:
    // The storage types, numbered as the format numbers them.
    enum class DType : quint8 { Float32 = 0, Int8 = 1, Int16 = 2, Int32 = 3, Float16 = 4, BFloat16 = 5 };

    struct Variable {
        QString name;
        std::vector<qint64> shape; // outermost first
        DType dtype = DType::Float32;
        qint64 offset = 0;         // of the data, in the joined model.bin
        qint64 bytes = 0;

        qint64 rows() const { return shape.empty() ? 1 : shape.front(); }
        qint64 rowSize() const; // elements per row
    };

    // Thrown for a folder that is no CTranslate2 model or whose model.bin is damaged.
    struct Broken : std::runtime_error {
        using std::runtime_error::runtime_error;
    };
    struct NotAModel : std::runtime_error {
        using std::runtime_error::runtime_error;
    };

    // Indexes the model.bin of `folder`. Throws NotAModel or Broken.
    explicit CTranslate2Reader(const QString &folder);
    ~CTranslate2Reader();

    // Whether `folder` holds a model.bin or its first part.
    static bool isModelFolder(const QString &folder);

    // The model family the file was written for, "WhisperSpec" for Whisper.
    const QString &architecture() const { return m_architecture; }
    qint64 totalBytes() const;

    // Aliases resolve to the variable they name; an alias's "_scale" follows it.
    const Variable *find(const QString &name) const;
    const Variable &get(const QString &name) const; // throws Broken when absent
    QStringList names() const { return m_order; }
    // A scalar integer attribute such as "encoder/num_heads".
    std::optional<qint64> integer(const QString &name) const;

    // `count` rows from row `first` as 32-bit floats; int8 and int16 weights are
    // dequantised with their saved scales.
    std::vector<float> rows(const Variable &v, qint64 first, qint64 count) const;

    // The token list: vocabulary.json, vocabulary.txt or tokenizer.json, in that order.
    QStringList vocabulary() const;

    // GPT-2's byte-level form back to raw bytes: the token strings map every byte to a
    // printable character, whisper.cpp wants the bytes themselves.
    static QByteArray byteLevelDecode(const QString &token);

private:
    class Parts;
    void readIndex();
    QString resolve(const QString &name) const;

    QString m_folder;
    std::unique_ptr<Parts> m_parts;
    QString m_architecture;
    QHash<QString, Variable> m_variables;
    QHash<QString, QString> m_aliases;
    QStringList m_order;
    mutable QHash<QString, std::vector<float>> m_scales;
};

#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include <vector>

// Reads a whisper.cpp model file back, for checks: header, tokens, tensors.
struct GgmlFile {
    struct Tensor {
        std::vector<qint64> ne; // fastest first
        int type = -1;          // ggml's numbers: 0 f32, 1 f16, 6 q5_0, 7 q5_1
        std::vector<float> values; // quantised ones as they read back
    };

    std::vector<int> hparams; // the eleven header numbers
    QList<QByteArray> tokens;
    QHash<QByteArray, Tensor> tensors;
    bool complete = false; // the file ended right after a whole tensor

    // With `values` false only shapes and types are kept.
    static GgmlFile read(const QString &path, bool values = true);
};

#pragma once

#include "core/TranscriptionResult.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <vector>

// Scores of a recognition against what is known of a real recording: its words (error
// rate), where speech lies (reference speaker turns, or the known places of joined
// recordings), and sentences said once but written twice.
namespace SpeechScore {

// Lower case, punctuation dropped; a hyphen or dash parts words ("ill-disposed").
QStringList words(const QString &text);
// Word-level edit distance: substitutions, insertions and deletions.
int errors(const QStringList &reference, const QStringList &hypothesis);

struct Region {
    double start = 0, end = 0; // seconds
};

// A recording with what is known of it.
struct Recording {
    QString name;
    std::vector<float> samples;
    QList<Region> speech;  // where someone speaks, merged, in order
    QList<double> onsets;  // where speech starts after a pause, in seconds
    QString reference;     // the words said; empty where unknown
};

// The speaker turns of an RTTM file merged into stretches of speech; a stretch whose pause
// before it is at least `pause` seconds counts as an onset.
Recording fromRttm(const QString &name, const QString &wav, const QString &rttm, double pause = 0.3);

// The five LibriVox recordings of pocketsphinx-testdata joined with known silences
// (leading, between them and a long tail) under a faint noise floor, as a recording with
// pauses and quiet stretches. Speech starts and ends in each recording are found from its
// own loudness (frames within 25 dB of its loudest), not by ear.
Recording joinedLibriVox();

struct Score {
    double medianOnsetErrorS = 0; // |nearest word start - onset|, median over the onsets
    double worstOnsetErrorS = 0;
    int wordsOutsideSpeech = 0;   // word starts more than 0.3 s away from any speech
    int words = 0;
    int repeatedSentences = 0;    // passages of six words or more written again
    double wer = -1;              // -1 where the words are unknown
};

Score score(const Recording &recording, const TranscriptionResult &result);
// The same for a plain list of word start times and a text (another program's output).
Score score(const Recording &recording, const QList<double> &wordStarts, const QString &text);

} // namespace SpeechScore

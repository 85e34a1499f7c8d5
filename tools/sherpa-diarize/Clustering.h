// Groups speech pieces by voice from one embedding per piece: average linkage on cosine
// distance, weighted by the pieces' lengths, joining clusters while the nearest two lie
// closer than a distance, and on down to a largest count.
#pragma once

#include <vector>

namespace clustering {

struct Piece {
    std::vector<float> embedding; // any length, the same for all pieces; need not be normalised
    double weight = 1;            // seconds of speech
};

// One label 0..count-1 per piece, numbered by first appearance. Clusters are joined while
// their distance is below `maxDistance`, and further while there are more than
// `maxCount`; a `maxDistance` of 2 or more joins all, a `maxCount` of 0 leaves the count
// open.
std::vector<int> agglomerate(const std::vector<Piece> &pieces, double maxDistance, int maxCount);

// The label of the cluster whose length-weighted mean direction lies nearest to
// `embedding`; -1 when there are no labels.
int nearest(const std::vector<Piece> &pieces, const std::vector<int> &labels, const std::vector<float> &embedding);

// Labels again, with every cluster that holds less than `minWeight` seconds given to the
// nearest one that holds enough: so little speech is rather a piece where two voices
// follow too closely to part than a voice of its own. Numbered by first appearance;
// unchanged where no cluster holds enough.
std::vector<int> dropSlight(const std::vector<Piece> &pieces, const std::vector<int> &labels, double minWeight);

} // namespace clustering

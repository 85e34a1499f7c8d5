#include "Clustering.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace clustering {

namespace {

std::vector<double> unit(const std::vector<float> &v)
{
    double norm = 0;
    for (float x : v)
        norm += double(x) * x;
    norm = norm > 0 ? std::sqrt(norm) : 1;
    std::vector<double> u;
    u.reserve(v.size());
    for (float x : v)
        u.push_back(x / norm);
    return u;
}

double cosineDistance(const std::vector<double> &a, const std::vector<double> &b)
{
    return 1 - std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
}

} // namespace

std::vector<int> agglomerate(const std::vector<Piece> &pieces, double maxDistance, int maxCount)
{
    const size_t n = pieces.size();
    std::vector<std::vector<double>> units;
    units.reserve(n);
    for (const Piece &p : pieces)
        units.push_back(unit(p.embedding));
    std::vector<std::vector<double>> d(n, std::vector<double>(n, 0));
    for (size_t i = 0; i < n; ++i)
        for (size_t j = i + 1; j < n; ++j)
            d[i][j] = d[j][i] = cosineDistance(units[i], units[j]);

    // Clusters are named by their first piece; `owner` leads each piece to its cluster.
    std::vector<double> weight(n);
    for (size_t i = 0; i < n; ++i)
        weight[i] = std::max(pieces[i].weight, 1e-3);
    std::vector<bool> alive(n, true);
    std::vector<size_t> owner(n);
    std::iota(owner.begin(), owner.end(), 0);
    for (size_t count = n; count > 1; --count) {
        double best = std::numeric_limits<double>::max();
        size_t a = 0, b = 0;
        for (size_t i = 0; i < n; ++i) {
            if (!alive[i])
                continue;
            for (size_t j = i + 1; j < n; ++j) {
                if (alive[j] && d[i][j] < best) {
                    best = d[i][j];
                    a = i;
                    b = j;
                }
            }
        }
        if (best >= maxDistance && (maxCount < 1 || int(count) <= maxCount))
            break;
        for (size_t k = 0; k < n; ++k) {
            if (alive[k] && k != a && k != b)
                d[a][k] = d[k][a] = (weight[a] * d[a][k] + weight[b] * d[b][k]) / (weight[a] + weight[b]);
        }
        weight[a] += weight[b];
        alive[b] = false;
        for (size_t &o : owner)
            if (o == b)
                o = a;
    }

    std::vector<int> labels(n, -1);
    std::vector<size_t> seen;
    for (size_t i = 0; i < n; ++i) {
        auto at = std::find(seen.begin(), seen.end(), owner[i]);
        if (at == seen.end())
            at = seen.insert(seen.end(), owner[i]);
        labels[i] = int(at - seen.begin());
    }
    return labels;
}

int nearest(const std::vector<Piece> &pieces, const std::vector<int> &labels, const std::vector<float> &embedding)
{
    const int count = labels.empty() ? 0 : *std::max_element(labels.begin(), labels.end()) + 1;
    const std::vector<double> e = unit(embedding);
    std::vector<std::vector<double>> centres(size_t(count), std::vector<double>(e.size(), 0));
    for (size_t i = 0; i < pieces.size(); ++i) {
        const std::vector<double> u = unit(pieces[i].embedding);
        for (size_t k = 0; k < u.size() && k < e.size(); ++k)
            centres[size_t(labels[i])][k] += pieces[i].weight * u[k];
    }
    int best = -1;
    double bestDistance = std::numeric_limits<double>::max();
    for (int c = 0; c < count; ++c) {
        std::vector<float> centre(centres[size_t(c)].begin(), centres[size_t(c)].end());
        const double distance = cosineDistance(unit(centre), e);
        if (distance < bestDistance) {
            bestDistance = distance;
            best = c;
        }
    }
    return best;
}

std::vector<int> dropSlight(const std::vector<Piece> &pieces, const std::vector<int> &labels, double minWeight)
{
    const int count = labels.empty() ? 0 : *std::max_element(labels.begin(), labels.end()) + 1;
    std::vector<double> weight(size_t(count), 0);
    for (size_t i = 0; i < pieces.size(); ++i)
        weight[size_t(labels[i])] += pieces[i].weight;
    // The clusters that hold enough, numbered 0.. among themselves.
    std::vector<int> keptAs(size_t(count), -1);
    int kept = 0;
    for (int c = 0; c < count; ++c)
        if (weight[size_t(c)] >= minWeight)
            keptAs[size_t(c)] = kept++;
    if (kept == 0 || kept == count)
        return labels;
    std::vector<Piece> solid;
    std::vector<int> solidLabels;
    for (size_t i = 0; i < pieces.size(); ++i) {
        if (keptAs[size_t(labels[i])] >= 0) {
            solid.push_back(pieces[i]);
            solidLabels.push_back(keptAs[size_t(labels[i])]);
        }
    }
    std::vector<int> out(labels.size());
    for (size_t i = 0; i < labels.size(); ++i) {
        const int k = keptAs[size_t(labels[i])];
        out[i] = k >= 0 ? k : nearest(solid, solidLabels, pieces[i].embedding);
    }
    std::vector<int> order(size_t(kept), -1);
    int next = 0;
    for (int &l : out) {
        if (order[size_t(l)] < 0)
            order[size_t(l)] = next++;
        l = order[size_t(l)];
    }
    return out;
}

} // namespace clustering

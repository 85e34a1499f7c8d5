#pragma once

#include "core/HistoryItem.h"

#include <QObject>
#include <QSet>
#include <QString>

#include <atomic>
#include <memory>

// Narrows the history to the items whose name or text holds a query, blind to case and
// accents as the find bar is. Names are matched at once; the texts (original, speaker
// text, refined levels) are searched on the pool, and their matches come in as they are
// found. A new search replaces the one running.
class HistoryFilter : public QObject {
    Q_OBJECT

public:
    explicit HistoryFilter(QObject *parent = nullptr);
    ~HistoryFilter() override;

    void search(const QList<HistoryItem> &items, const QString &query);
    // Whether a query is set: without one every item shows.
    bool isActive() const { return !m_query.isEmpty(); }
    const QSet<QString> &matches() const { return m_matches; }
    // True while texts are still being searched.
    bool isSearching() const { return m_searching; }

signals:
    void matchesChanged();

private:
    QString m_query;
    QSet<QString> m_matches;
    bool m_searching = false;
    // Raised by every new search, so that an older one stops and its late results are dropped.
    std::shared_ptr<std::atomic<int>> m_generation = std::make_shared<std::atomic<int>>(0);
};

#include "app/HistoryFilter.h"

#include "review/TextFind.h"

#include <QFutureWatcher>
#include <QPromise>
#include <QtConcurrent/QtConcurrentRun>

HistoryFilter::HistoryFilter(QObject *parent) : QObject(parent) {}

HistoryFilter::~HistoryFilter()
{
    ++*m_generation;
}

void HistoryFilter::search(const QList<HistoryItem> &items, const QString &query)
{
    const int generation = ++*m_generation;
    m_query = TextFind::fold(query.trimmed());
    m_matches.clear();
    m_searching = false;
    if (m_query.isEmpty()) {
        emit matchesChanged();
        return;
    }
    struct Texts {
        QString id;
        QStringList texts;
    };
    QList<Texts> pending;
    for (const HistoryItem &item : items) {
        if (TextFind::fold(item.fileName).contains(m_query)) {
            m_matches.insert(item.id);
            continue;
        }
        Texts t{item.id, {item.result.fullText}};
        if (item.speakerText)
            t.texts << *item.speakerText;
        t.texts += item.refined.values();
        pending << t;
    }
    emit matchesChanged();
    if (pending.isEmpty())
        return;

    m_searching = true;
    auto *watcher = new QFutureWatcher<QString>(this);
    connect(watcher, &QFutureWatcher<QString>::resultReadyAt, this, [this, watcher, generation](int index) {
        if (generation != *m_generation)
            return;
        m_matches.insert(watcher->resultAt(index));
        emit matchesChanged();
    });
    connect(watcher, &QFutureWatcher<QString>::finished, this, [this, watcher, generation] {
        watcher->deleteLater();
        if (generation != *m_generation)
            return;
        m_searching = false;
        emit matchesChanged();
    });
    watcher->setFuture(QtConcurrent::run(
        [pending, query = m_query, current = m_generation, generation](QPromise<QString> &promise) {
            for (const Texts &t : pending) {
                if (*current != generation)
                    return;
                for (const QString &text : t.texts) {
                    if (TextFind::fold(text).contains(query)) {
                        promise.addResult(t.id);
                        break;
                    }
                }
            }
        }));
}

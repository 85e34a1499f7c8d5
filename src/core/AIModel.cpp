#include "core/AIModel.h"

#include <QCoreApplication>

QString AIProviders::rawValue(AIProvider provider)
{
    return provider == AIProvider::openai ? QStringLiteral("openai") : QStringLiteral("anthropic");
}

std::optional<AIProvider> AIProviders::fromRawValue(const QString &raw)
{
    if (raw == QLatin1String("anthropic"))
        return AIProvider::anthropic;
    if (raw == QLatin1String("openai"))
        return AIProvider::openai;
    return std::nullopt;
}

const QList<AIModel> &AIModel::all()
{
    static const QList<AIModel> models{
        {QStringLiteral("claude-opus-5"), QStringLiteral(QT_TRANSLATE_NOOP("Sagwerk", "Claude Opus 5 (genau)")),
         AIProvider::anthropic},
        {QStringLiteral("claude-sonnet-5"),
         QStringLiteral(QT_TRANSLATE_NOOP("Sagwerk", "Claude Sonnet 5 (schneller)")), AIProvider::anthropic},
        {QStringLiteral("claude-haiku-4-5"),
         QStringLiteral(QT_TRANSLATE_NOOP("Sagwerk", "Claude Haiku 4.5 (am schnellsten)")), AIProvider::anthropic},
        {QStringLiteral("gpt-4o"), QStringLiteral(QT_TRANSLATE_NOOP("Sagwerk", "OpenAI GPT-4o (genau)")),
         AIProvider::openai},
        {QStringLiteral("gpt-4o-mini"),
         QStringLiteral(QT_TRANSLATE_NOOP("Sagwerk", "OpenAI GPT-4o mini (schneller)")), AIProvider::openai},
    };
    return models;
}

AIModel AIModel::by(const QString &id)
{
    for (const AIModel &model : all())
        if (model.id == id)
            return model;
    return all().first();
}

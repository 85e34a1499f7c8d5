#pragma once

#include <QHashFunctions>
#include <QList>
#include <QString>

#include <optional>

// The provider that serves an AI model, and so the client and the API key to use.
enum class AIProvider { anthropic, openai };

namespace AIProviders {
// "anthropic" or "openai".
QString rawValue(AIProvider provider);
// The provider of a raw value; any other text gives none.
std::optional<AIProvider> fromRawValue(const QString &raw);
} // namespace AIProviders

// One AI model the application offers for refinement and speaker naming. `name` holds
// the German display name, which is also its translation key: views translate it.
struct AIModel {
    QString id; // sent to the provider as the request's model
    QString name;
    AIProvider provider = AIProvider::anthropic;

    bool operator==(const AIModel &) const = default;

    // The fixed catalogue, in the order of the model picker.
    static const QList<AIModel> &all();
    // The entry of `id`; an id the catalogue lacks gives the first entry, so a stored
    // setting from another version still resolves (and stays as it is).
    static AIModel by(const QString &id);
};

inline size_t qHash(const AIModel &model, size_t seed = 0) noexcept
{
    return qHash(model.id, seed);
}

// The API key that AI work uses now: the one of the active model's provider.
#include "ai/AIModel.h"
#include "app/AppModel.h"

QString AppModel::activeKey() const
{
    return AIModel::by(m_activeModelId).provider == AIProvider::openai ? m_openaiKey : m_anthropicKey;
}

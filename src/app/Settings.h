#pragma once

#include <QString>

// The persisted settings: keys and defaults, in the desktop's settings store
// (organisation "Morvane", application "Sagwerk"). API keys are never among them.
namespace Settings {

inline const QString speechModelId = QStringLiteral("selectedModelId");
inline const QString transcribeLanguage = QStringLiteral("transcribeLanguage");
inline const QString aiModelId = QStringLiteral("activeModelId");
inline const QString speakerDetection = QStringLiteral("speakerDetection");
inline const QString speakerCount = QStringLiteral("speakerCount");
inline const QString appLanguage = QStringLiteral("appLanguage");
inline const QString interviewLiveSpeakers = QStringLiteral("interviewLiveSpeakers");
inline const QString onboardingDone = QStringLiteral("onboardingDone");

namespace Default {
inline const QString speechModelId = QStringLiteral("small-q5_1");
inline const QString transcribeLanguage = QStringLiteral("de");
inline const QString aiModelId = QStringLiteral("claude-opus-5");
inline const QString appLanguage = QStringLiteral("system");
} // namespace Default

} // namespace Settings

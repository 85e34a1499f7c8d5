#pragma once

#include "LocalServer.h"
#include "Media.h"

#include "app/AppModel.h"
#include "app/Settings.h"
#include "core/TranscriptionResult.h"
#include "storage/BundleStore.h"

#include <QDir>
#include <QSettings>
#include <QTest>

#include <gtest/gtest.h>

// Each test starts in the throw-away session with no settings (but the first-run wizard
// done), no models and no bundles.
class ShellTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_FALSE(qEnvironmentVariable("SAGWERK_SESSION_DIR").isEmpty()) << "run under with-secret-service.sh";
        QSettings settings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk"));
        settings.clear();
        settings.setValue(Settings::onboardingDone, true);
        QDir(Media::dataDir()).removeRecursively();
    }

    // The generated model, installed as Base and chosen.
    static void installBase()
    {
        Media::installBase();
        QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk"))
            .setValue(Settings::speechModelId, QStringLiteral("base-q5_1"));
    }

    // A stored transcription with a short tone as its audio.
    static QString addBundle(const QString &name, const QDateTime &date)
    {
        TranscriptionResult result;
        result.fullText = QStringLiteral("Hallo.");
        result.language = QStringLiteral("de");
        return BundleStore::create(name, date, Media::tone(QStringLiteral("m4a")), result).url;
    }
};

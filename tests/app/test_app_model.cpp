// The application state headless: start, settings, staging, the job road with every
// cancel moment, and item changes. Runs in a throw-away session with a real keyring.
#include "LocalServer.h"
#include "Media.h"
#include "StoredKey.h"

#include "app/AppModel.h"
#include "app/TranscriptionJob.h"
#include "app/Settings.h"
#include "app/ModelStore.h"
#include "storage/BundleStore.h"
#include "storage/KeychainStore.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

using Media::dataDir;
using Media::installBase;

namespace {

const QString smallMissing
    = QStringLiteral("Modell Small ist nicht installiert. Bitte in den Einstellungen herunterladen.");

class AppModelTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        // The session script gave us a fresh HOME; each test starts from nothing.
        ASSERT_TRUE(qEnvironmentVariable("SAGWERK_SESSION_DIR").size() > 0);
        QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).clear();
        QDir(dataDir()).removeRecursively();
    }

    // Runs the event loop until the job has ended.
    static void waitIdle(AppModel &app, int timeoutMs = 120000)
    {
        QElapsedTimer clock;
        clock.start();
        while (app.transcription().isBusy() && clock.elapsed() < timeoutMs)
            QTest::qWait(20);
        ASSERT_FALSE(app.transcription().isBusy()) << "job did not end";
    }

    static QStringList bundleFolders()
    {
        return QDir(BundleStore::root()).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    }
};

} // namespace

TEST_F(AppModelTest, StartsFromDefaultsOrFromWhatWasStored)
{
    {
        AppModel app;
        EXPECT_EQ(app.selectedModelId(), QStringLiteral("small-q5_1"));
        EXPECT_EQ(app.language(), QStringLiteral("de"));
        EXPECT_EQ(app.activeModelId(), QStringLiteral("claude-opus-5"));
        EXPECT_EQ(app.appLanguage(), QStringLiteral("system"));
        EXPECT_TRUE(app.showOnboarding()) << "no model, no wizard done";

        // Every change is stored at once, under the fixed keys.
        app.setLanguage(QStringLiteral("auto"));
        app.setSpeakerCount(3);
        app.setSpeakerDetection(true);
        app.setInterviewLiveSpeakers(true);
        app.setSelectedModelId(QStringLiteral("gone-model"));
        app.saveAnthropicKey(QStringLiteral("  sk-ant-123 \n"));
        EXPECT_EQ(app.anthropicKey(), QStringLiteral("sk-ant-123"));
    }
    QSettings settings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk"));
    EXPECT_EQ(settings.value(Settings::transcribeLanguage).toString(), QStringLiteral("auto"));
    EXPECT_EQ(settings.value(Settings::speakerCount).toInt(), 3);
    EXPECT_FALSE(settings.allKeys().join(u' ').contains(QStringLiteral("sk-ant")));

    installBase();
    AppModel app;
    EXPECT_EQ(app.language(), QStringLiteral("auto"));
    EXPECT_TRUE(app.speakerDetection());
    EXPECT_TRUE(app.interviewLiveSpeakers());
    EXPECT_TRUE(app.anthropicKey().isEmpty()) << "the key store answers a moment later";
    QSignalSpy keyArrived(&app, &AppModel::anthropicKeyChanged);
    EXPECT_TRUE(QTest::qWaitFor([&] { return keyArrived.count() == 1; }));
    EXPECT_EQ(app.anthropicKey(), QStringLiteral("sk-ant-123"));
    // An unknown stored id stays stored, and the job falls back to the second entry.
    EXPECT_EQ(app.selectedModelId(), QStringLiteral("gone-model"));
    EXPECT_EQ(app.selectedModel().id, QStringLiteral("small-q5_1"));
    // A machine with a model skips the wizard without marking it done.
    EXPECT_FALSE(app.showOnboarding());
    EXPECT_FALSE(settings.contains(Settings::onboardingDone));

    // Blanks clear the key in memory and in the keyring.
    app.saveAnthropicKey(QStringLiteral(" \t"));
    EXPECT_TRUE(app.anthropicKey().isEmpty());
    EXPECT_FALSE(storedKey(QString(KeychainStore::anthropicAccount)).has_value());

    // A key saved before the store's answer at start is newer than that answer and stays.
    app.saveOpenAIKey(QStringLiteral("sk-openai-1"));
    {
        AppModel early;
        early.saveOpenAIKey(QString());
        EXPECT_FALSE(storedKey(QString(KeychainStore::openaiAccount)).has_value());
        EXPECT_TRUE(early.openaiKey().isEmpty());
    }

    // Finishing the wizard picks the first installed model when the chosen one is not.
    app.finishOnboarding();
    EXPECT_EQ(app.selectedModelId(), QStringLiteral("base-q5_1"));
    EXPECT_TRUE(settings.value(Settings::onboardingDone).toBool());
}

TEST_F(AppModelTest, StagingRulesAndTheMissingModel)
{
    AppModel app;
    app.startPending(); // nothing staged: nothing happens
    EXPECT_FALSE(app.pending().has_value());

    app.setErrorMessage(QStringLiteral("alt"));
    app.stage(QStringLiteral("/x/Interview Meier.m4a"));
    ASSERT_TRUE(app.pending().has_value());
    EXPECT_FALSE(app.errorMessage().has_value());
    const auto *file = std::get_if<PendingItem::File>(&app.pending()->kind);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->name, QStringLiteral("Interview Meier.m4a"));

    const QUuid first = app.pending()->id;
    app.stage(QStringLiteral("/x/b.mp3"), QStringLiteral("Gespräch"));
    EXPECT_NE(app.pending()->id, first);
    EXPECT_EQ(std::get<PendingItem::File>(app.pending()->kind).name, QStringLiteral("Gespräch"));

    // No model installed: the start ends in the message and the setup is gone.
    app.startPending();
    EXPECT_FALSE(app.pending().has_value());
    EXPECT_FALSE(app.transcription().isBusy());
    EXPECT_EQ(app.errorMessage(), smallMissing);

    app.stageRecording();
    app.startPending();
    EXPECT_TRUE(app.showRecorder());
    app.stageInterview();
    app.startPending();
    EXPECT_TRUE(app.interviewActive());
    app.stage(QStringLiteral("/x/c.wav"));
    EXPECT_FALSE(app.interviewActive());
}

TEST_F(AppModelTest, AFileBecomesAStoredItemThatSurvivesARestart)
{
    installBase();
    TranscriptionResult segments;
    auto texts = [](const TranscriptionResult &r) {
        QStringList t;
        for (const TranscriptSegment &s : r.segments)
            t << s.text + QString::number(s.startMs) + QString::number(s.words.size());
        return t;
    };
    const QString audio = Media::tone(QStringLiteral("mp3"));
    {
        AppModel app;
        app.setSelectedModelId(QStringLiteral("base-q5_1"));
        QSignalSpy progress(&app.transcription(), &TranscriptionJob::busyProgressChanged);
        app.stage(audio, QStringLiteral("Probe"));
        app.startPending();
        EXPECT_TRUE(app.transcription().isBusy());
        // Busy: another start is ignored without a word.
        app.stage(QStringLiteral("/x/other.mp3"));
        EXPECT_FALSE(app.pending().has_value());
        waitIdle(app);

        EXPECT_FALSE(app.errorMessage().has_value()) << app.errorMessage().value_or(QString()).toStdString();
        ASSERT_EQ(app.history().size(), 1);
        const HistoryItem &item = app.history().first();
        ASSERT_TRUE(app.current().has_value());
        EXPECT_EQ(app.current()->id, item.id);
        EXPECT_EQ(item.fileName, QStringLiteral("Probe"));
        ASSERT_TRUE(item.bundleURL.has_value());
        EXPECT_TRUE(QFile::exists(*item.audioURL));
        EXPECT_GT(progress.count(), 0);
        EXPECT_EQ(app.transcription().busyProgress(), 0.0);
        EXPECT_TRUE(QFile::exists(audio)) << "the source stays where it was";
        segments = item.result;
    }
    AppModel again;
    ASSERT_EQ(again.history().size(), 1);
    const HistoryItem listed = again.history().first();
    EXPECT_EQ(listed.fileName, QStringLiteral("Probe"));
    // Listed without its segments; opening it brings them, into the list as well.
    EXPECT_TRUE(listed.segmentsPending);
    EXPECT_TRUE(listed.result.segments.isEmpty());
    again.setCurrent(listed);
    again.setCurrent(listed);
    EXPECT_TRUE(waitFor([&] { return !again.current()->segmentsPending; }));
    EXPECT_EQ(texts(again.current()->result), texts(segments));
    EXPECT_FALSE(again.history().first().segmentsPending);
    EXPECT_EQ(texts(again.history().first().result), texts(segments));
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
}

TEST_F(AppModelTest, CancelAtEachMomentLeavesNoTrace)
{
    installBase();
    AppModel app;
    app.setSelectedModelId(QStringLiteral("base-q5_1"));
    const QString longAudio = Media::tone(QStringLiteral("opus"), 60.0);

    auto expectIntake = [&] {
        EXPECT_FALSE(app.transcription().isBusy());
        EXPECT_FALSE(app.errorMessage().has_value());
        EXPECT_FALSE(app.pending().has_value());
        EXPECT_FALSE(app.current().has_value());
        EXPECT_TRUE(app.history().isEmpty());
        EXPECT_TRUE(bundleFolders().isEmpty());
    };

    // Right after the start, before the task's first test.
    app.transcribe(longAudio);
    app.cancelTranscription();
    waitIdle(app);
    expectIntake();

    // During recognition: as soon as progress shows.
    app.transcribe(longAudio);
    QElapsedTimer clock;
    clock.start();
    while (app.transcription().busyProgress() == 0.0 && app.transcription().isBusy() && clock.elapsed() < 60000)
        QTest::qWait(5);
    app.cancelTranscription();
    waitIdle(app);
    expectIntake();

    // A failure shows its text; the model vanishing before the task runs is one.
    app.transcribe(Media::textFileNamedMp3());
    waitIdle(app);
    EXPECT_TRUE(app.errorMessage().value_or(QString()).startsWith(
        QStringLiteral("Audio konnte nicht nach 16 kHz konvertiert werden: ")));
    EXPECT_TRUE(app.history().isEmpty());

    app.transcribe(Media::tone(QStringLiteral("wav")));
    QFile::remove(dataDir() + QStringLiteral("/models/ggml-base-q5_1.bin"));
    waitIdle(app);
    EXPECT_EQ(app.errorMessage(), QStringLiteral("Kein Modell ausgewählt/installiert."));
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());

    // Quitting mid-job stops the job rather than waiting on the event loop it blocks.
    installBase();
    auto closing = std::make_unique<AppModel>();
    closing->setSelectedModelId(QStringLiteral("base-q5_1"));
    closing->transcribe(longAudio);
    clock.restart();
    while (closing->transcription().busyProgress() == 0.0 && clock.elapsed() < 60000)
        QTest::qWait(5);
    clock.restart();
    closing.reset();
    EXPECT_LT(clock.elapsed(), 20000);
    EXPECT_TRUE(bundleFolders().isEmpty());
}

TEST_F(AppModelTest, ItemsWithoutABundleAndTheirChanges)
{
    installBase();
    // A file where the bundle root should be: no bundle can be made.
    QDir().mkpath(dataDir());
    QFile blocker(dataDir() + QStringLiteral("/Aufnahmen"));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();

    AppModel app;
    app.setSelectedModelId(QStringLiteral("base-q5_1"));
    app.transcribe(Media::tone(QStringLiteral("wav")), QStringLiteral("Nur im Speicher"));
    waitIdle(app);
    ASSERT_EQ(app.history().size(), 1);
    const HistoryItem memoryOnly = app.history().first();
    EXPECT_FALSE(memoryOnly.bundleURL.has_value());
    EXPECT_FALSE(memoryOnly.audioURL.has_value());
    EXPECT_FALSE(app.errorMessage().has_value());

    // Without audio there is nothing to run again.
    app.reTranscribe(memoryOnly);
    EXPECT_EQ(app.errorMessage(), QStringLiteral("Audiodatei nicht gefunden."));

    // Corrections of the item change it in the list and on show alike.
    app.addCorrection(memoryOnly.id, QStringLiteral("a"), QStringLiteral("b"), false, false);
    app.addCorrection(memoryOnly.id, QString(), QStringLiteral("ignored"), false, false);
    ASSERT_EQ(app.history().first().corrections.size(), 1);
    EXPECT_EQ(app.current()->corrections, app.history().first().corrections);
    app.removeCorrection(memoryOnly.id, app.current()->corrections.first().id);
    EXPECT_TRUE(app.current()->corrections.isEmpty());

    // Deleting it empties the list and the screen.
    app.deleteItem(memoryOnly);
    EXPECT_TRUE(app.history().isEmpty());
    EXPECT_FALSE(app.current().has_value());
}

TEST_F(AppModelTest, CorrectionsReachTheBundleAndDeleteRemovesIt)
{
    installBase();
    AppModel app;
    app.setSelectedModelId(QStringLiteral("base-q5_1"));
    for (const QString name : {"Erstes", "Zweites"}) {
        app.transcribe(Media::tone(QStringLiteral("wav")), name);
        waitIdle(app);
    }
    ASSERT_EQ(app.history().size(), 2);
    const HistoryItem newest = app.history().at(0), older = app.history().at(1);
    EXPECT_EQ(newest.fileName, QStringLiteral("Zweites"));

    app.addCorrection(older.id, QStringLiteral("Meier"), QStringLiteral("Maier"), true, true);
    EXPECT_EQ(app.current()->id, newest.id) << "a change of another item leaves the screen alone";
    // Names: the item's own, kept in the bundle; a blank one changes nothing.
    app.renameItem(older.id, QStringLiteral(" Gespräch mit Frau Miller\n"));
    app.renameItem(older.id, QStringLiteral("  "));
    app.setSpeakerNames(older.id, {{QStringLiteral("Sprecher 1"), QStringLiteral("Diane Miller")}});
    {
        AppModel reread;
        const auto stored = std::find_if(reread.history().begin(), reread.history().end(),
                                         [&](const HistoryItem &h) { return h.id == older.id; });
        ASSERT_NE(stored, reread.history().end());
        ASSERT_EQ(stored->corrections.size(), 1);
        EXPECT_EQ(stored->corrections.first().to, QStringLiteral("Maier"));
        EXPECT_EQ(stored->fileName, QStringLiteral("Gespräch mit Frau Miller"));
        EXPECT_EQ(stored->speakerNames.value(QStringLiteral("Sprecher 1")), QStringLiteral("Diane Miller"));
    }

    app.deleteItem(older);
    EXPECT_EQ(app.history().size(), 1);
    EXPECT_EQ(app.current()->id, newest.id) << "deleting another item keeps the one on show";
    EXPECT_EQ(bundleFolders().size(), 1);
}

#pragma once

#include "core/HistoryItem.h"
#include "review/SpeakerTurn.h"
#include "review/TextFind.h"

#include <QWidget>

#include <functional>
#include <optional>

class AppModel;
class FindBar;
class AudioPlayer;
class PlayerBar;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QHBoxLayout;
class QLabel;
class QMenu;
class QPushButton;
class QScrollArea;
class QStackedWidget;
class QTextBrowser;
class QTextEdit;
class QToolButton;
class QUndoStack;
class QVBoxLayout;
class TranscriptTextView;

// The work surface of one finished transcription, `AppModel::current()`: header, player,
// view picker, the text with its word cursor, the corrections, copy and export. Its
// local state starts afresh whenever another item becomes current, and survives updates
// of the same item.
class ResultView : public QWidget {
    Q_OBJECT

public:
    ResultView(AppModel &app, QWidget *parent = nullptr);
    ~ResultView() override;

    const HistoryItem &item() const { return m_item; }
    AudioPlayer &player() const { return *m_player; }
    TranscriptTextView *textView() const { return m_textView; }

    bool showTimestamps() const { return m_showTimestamps; }
    void setShowTimestamps(bool on);
    qint64 selectedView() const { return m_selectedView; }
    void setSelectedView(qint64 view);
    const QString &selectedText() const { return m_selectedText; }
    bool copied() const { return m_copied; }

    // What copy and the text, PDF and Word files take.
    QString currentText() const;
    QString exportBase() const;

    // The save dialog: a default file name and a file-type filter (empty for any) in, the
    // chosen path or nothing out. Replaceable, so that the exports run without a person.
    using SavePanel = std::function<QString(const QString &defaultName, const QString &filter)>;
    void setSavePanel(SavePanel panel) { m_savePanel = std::move(panel); }

    // The actions of the screen's controls.
    void copy();
    void exportText();
    void exportPDF();
    void exportDocx();
    void exportSubtitles();
    void exportVtt();
    void exportJson();
    void revealBundle();
    void openCorrectionSheet(const QString &from);
    // Asks for a new name of the speaker shown as `shown`; undoable.
    void askSpeakerName(const QString &shown);
    // Renames at once, as a confirmed question does; undoable with Ctrl+Z.
    void renameSpeaker(const QString &shown, const QString &name);
    QUndoStack *undoStack() const { return m_undo; }

    // Find in the text on show (Ctrl+F): every match marked, the current one in view.
    void openFind();
    void closeFind();
    void stepFind(bool forward);
    // Seeks the player to the current match and plays from there.
    void playFromMatch();
    FindBar *findBar() const { return m_findBar; }
    const QList<Corrections::Range> &findMatches() const { return m_matches; }
    qsizetype currentMatch() const { return m_match; }

signals:
    void copiedChanged();
    void selectedTextChanged();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void takeCurrent();
    void startItem();
    void buildSpeakerTurns();
    void fillSpeakerCounts(int chosen);
    void showItem();
    void showPicker();
    void showChips();
    void showActions();
    void showCorrectButton();
    void showAIControl();
    void showSpeakerControl();
    void chooseLevel(qint64 level);
    void retranslate();
    void refreshText();
    void refreshSurface();
    void setSelectedText(const QString &text);
    void setCopied(bool copied);
    void seekFromText(qint64 ms, bool exact);
    QString savePath(const QString &defaultName, const QString &filter) const;
    QTextEdit *shownText() const;
    // Finds anew when the query or the text on show changed; `keep` stays near the
    // current match instead of starting at the first.
    void runFind(bool textChanged);
    void showFindMarks();

    AppModel &m_app;
    HistoryItem m_item;
    AudioPlayer *m_player = nullptr;

    bool m_showTimestamps = true;
    qint64 m_selectedView = 0;
    bool m_copied = false;
    QString m_selectedText;
    QList<qint64> m_levels; // the sorted levels of the item's refined texts, as last seen
    std::optional<QString> m_speakerText; // the speaker text the turns were built from
    QList<SpeakerTurn> m_speakerTurns;
    qsizetype m_speakerTurnSegments = 0; // the number of segments the turns were built over
    QString m_levelShown;   // the refined text in the plain surface
    SavePanel m_savePanel;
    QUndoStack *m_undo = nullptr; // the renames of the item on show
    FindBar *m_findBar = nullptr;
    TextFind m_find;
    QString m_findKey; // what the finder was built from
    QList<Corrections::Range> m_matches;
    qsizetype m_match = -1;

    QVBoxLayout *m_column = nullptr;
    QLabel *m_title = nullptr;
    QLabel *m_meta = nullptr;
    QWidget *m_playerSlot = nullptr;
    PlayerBar *m_playerBar = nullptr;
    QWidget *m_picker = nullptr;
    QButtonGroup *m_pickerButtons = nullptr;
    QCheckBox *m_timestamps = nullptr;
    QStackedWidget *m_textArea = nullptr;
    TranscriptTextView *m_textView = nullptr;
    QTextBrowser *m_levelText = nullptr;
    QScrollArea *m_chips = nullptr;
    QPushButton *m_speakers = nullptr;
    QComboBox *m_speakerCount = nullptr;
    QLabel *m_speakerNotice = nullptr;
    QWidget *m_speakersBusy = nullptr;
    QLabel *m_speakersBusyText = nullptr;
    QToolButton *m_speakersCancel = nullptr;
    QToolButton *m_ai = nullptr;
    QMenu *m_aiMenu = nullptr;
    QWidget *m_aiBusy = nullptr;
    QLabel *m_aiBusyText = nullptr;
    QPushButton *m_reTranscribe = nullptr;
    QPushButton *m_correct = nullptr;
    QPushButton *m_copy = nullptr;
    QToolButton *m_export = nullptr;
    QMenu *m_exportMenu = nullptr;
};

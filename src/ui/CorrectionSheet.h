#pragma once

#include "core/Correction.h"
#include "review/Corrections.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;
class QWidget;

// The dialog in which one find-and-replace rule is made: it counts and previews the
// places in the raw segment text that the rule would replace.
class CorrectionSheet : public QDialog {
    Q_OBJECT

public:
    CorrectionSheet(const QString &searchBase, const QString &from, QWidget *parent = nullptr);

    // The rule as the fields stand, with a fresh id.
    Correction draft() const;
    QList<Corrections::Range> ranges() const;
    QString matchCountText() const;
    // "…" + up to 24 characters + "⟦match⟧" + up to 24 characters + "…", for the first six.
    QStringList previews() const;
    bool canSave() const;

signals:
    void saved(const Correction &correction);

private:
    void showState();

    QString m_searchBase;
    QLineEdit *m_from;
    QLineEdit *m_to;
    QCheckBox *m_caseSensitive;
    QCheckBox *m_wholeWord;
    QLabel *m_countIcon;
    QLabel *m_count;
    QWidget *m_previewBox;
    QVBoxLayout *m_previewLines;
    QPushButton *m_save;
};

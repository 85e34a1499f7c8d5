#pragma once

#include <QWidget>

class AppModel;
class ModelImportJob;
class QLabel;
class QProgressBar;
class QToolButton;

// Under the model list: imports a model file or a CTranslate2 model folder chosen by the
// user, with its progress and, at the end, what became of it in plain words.
class ModelImportRow : public QWidget {
    Q_OBJECT

public:
    explicit ModelImportRow(AppModel &app, QWidget *parent = nullptr);

    // The import itself, as the chooser hands it a path.
    void importFrom(const QString &source);
    QLabel *status() const { return m_status; }
    ModelImportJob &job() const { return *m_job; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void choose(bool folder);
    void retranslate();

    ModelImportJob *m_job = nullptr;
    QToolButton *m_button = nullptr;
    QProgressBar *m_progress = nullptr;
    QLabel *m_status = nullptr;
};
